// @ts-check
// Fields of forms: a label, an input, and what is wrong with what was typed.

import { el, numberOf } from "./dom.js";
import { typedPoints } from "./snap.js";

let last = 0;

/** `hint` is a tooltip, `help` stands below the field. */
function labelled(label, input, { hint = "", help = "", unit = "", isWide = false } = {}) {
    const id = `field-${++last}`;
    input.id = id;
    if (hint) input.title = hint;
    if (help) input.setAttribute("aria-describedby", `${id}-help`);
    return el("div", { class: isWide ? "field wide" : "field" },
              el("label", { for: id }, label, unit && el("span", { class: "field-unit" }, ` ${unit}`)), input,
              help && el("span", { class: "field-help", id: `${id}-help` }, help));
}

/** Says in the field and below it what is wrong with what was typed; empty: nothing. */
function refuse(input, problem) {
    input.setAttribute("aria-invalid", String(Boolean(problem)));
    input.parentElement?.querySelector(".field-problem")?.remove();
    if (problem) input.after(el("span", { class: "field-problem", role: "alert" }, problem));
}

/** A number; an empty field is null.
 *  @param {string} label @param {number|null|undefined} value @param {(value: number|null) => void} change
 *  @param {{name: string, unit?: string, hint?: string, help?: string, isRequired?: boolean, placeholder?: string,
 *  range?: [(value: number) => boolean, string]}} options `range`: which numbers are allowed, in words */
export function numberField(label, value, change, options) {
    let inUse = value ?? options.placeholder;
    const input = el("input", {
        type: "text", inputmode: "decimal", autocomplete: "off", name: options.name,
        placeholder: options.placeholder, required: options.isRequired,
        on: { input: () => {
            const number = numberOf(input.value);
            const isEmpty = !input.value.trim();
            const isNone = isEmpty ? Boolean(options.isRequired) : number === null;
            const isOutside = number !== null && options.range && !options.range[0](number);
            const problem = isNone ? "Type a number" : isOutside ? `Type a number ${options.range?.[1]}` : "";
            refuse(input, problem && `${problem}; ${inUse === undefined ? "none" : inUse} is in use.`);
            if (problem) return;
            inUse = number ?? options.placeholder;
            change(isEmpty ? null : number);
        } } });
    input.value = value === null || value === undefined ? "" : String(value);
    return labelled(label, input, options);
}

/** A number that counts once it is typed to its end.
 *  @param {string} label @param {number|null} value @param {(value: number|null) => void} change
 *  @param {{name: string, unit?: string, hint?: string, placeholder?: string}} options */
export function decidedNumberField(label, value, change, options) {
    const problem = (text) => (text && !(Number(numberOf(text)) > 0) ? "Type a number above 0." : "");
    return textField(label, value === null ? "" : String(value),
                     (text) => change(text ? numberOf(text) : null), { ...options, problem });
}

/** @param {string} label @param {string} value @param {(value: string) => void} change
 *  @param {{name: string, hint?: string, placeholder?: string, isWide?: boolean, list?: string,
 *  unit?: string, problem?: (value: string) => string}} options `problem`: what is wrong with a text */
export function textField(label, value, change, options) {
    const input = el("input", { type: "text", autocomplete: "off", name: options.name,
                                placeholder: options.placeholder, list: options.list,
                                on: { change: () => {
                                    const typed = input.value.trim();
                                    const problem = options.problem?.(typed) ?? "";
                                    refuse(input, problem);
                                    if (!problem) change(typed);
                                } } });
    input.value = value ?? "";
    return labelled(label, input, options);
}

/** @param {string} label @param {string} value @param {[string, string][]} choices value and text
 *  @param {(value: string) => void} change @param {{name: string, hint?: string, isWide?: boolean}} options */
export function choiceField(label, value, choices, change, options) {
    const input = el("select", { name: options.name, on: { change: () => change(input.value) } },
        choices.map(([key, text]) => el("option", { value: key, selected: key === value }, text)));
    return labelled(label, input, options);
}

/** Points, one per line. @param {string} label @param {[number, number][]} points
 *  @param {(points: [number, number][]) => void} change @param {{name: string, least: number, unit?: string}} options */
export function pointsField(label, points, change, options) {
    const input = el("textarea", {
        name: options.name, rows: Math.min(12, Math.max(4, points.length)), spellcheck: "false",
        on: { change: () => {
            const typed = typedPoints(input.value);
            const few = typed.points.length < options.least ? `At least ${options.least} points are needed.` : "";
            refuse(input, typed.problem || few);
            if (!typed.problem && !few) change(typed.points);
        } } });
    input.value = points.map(([x, y]) => `${x}, ${y}`).join("\n");
    return labelled(label, input, { ...options, hint: "x, y — @dx, dy — length < degrees", isWide: true });
}

/** Numbers in one line, one per point. @param {string} label @param {number[]} numbers
 *  @param {(numbers: number[]) => void} change @param {{name: string, unit?: string, hint?: string}} options */
export function numbersField(label, numbers, change, options) {
    const input = el("input", { type: "text", name: options.name, autocomplete: "off",
        on: { change: () => {
            const typed = input.value.split(/[;\s]+|,\s+/).filter(Boolean).map(numberOf);
            const isRefused = typed.some((number) => number === null || number < 0);
            refuse(input, isRefused ? "Type numbers of 0 or more with blanks between." : "");
            if (!isRefused) change(/** @type {number[]} */ (typed));
        } } });
    input.value = numbers.join("  ");
    return labelled(label, input, { ...options, isWide: true });
}

/** Rebuilds a form and leaves the cursor where it was, with what was being typed.
 *  @param {HTMLElement} form @param {any[]} nodes */
export function refill(form, nodes) {
    const active = /** @type {any} */ (document.activeElement);
    const isInside = form.contains(active) && active.name;
    const { name, value, selectionStart, selectionEnd } = active ?? {};
    form.replaceChildren(...nodes.flat(Infinity).filter(Boolean));
    if (!isInside) return;
    const again = /** @type {any} */ (form.querySelector(`[name="${CSS.escape(name)}"]`));
    if (!again) return;
    again.focus({ preventScroll: true });
    if (again.tagName !== "INPUT") return;
    const isSame = numberOf(value) !== null && numberOf(value) === numberOf(again.value);
    if (isSame || numberOf(value) === null) again.value = value;
    try { again.setSelectionRange(selectionStart, selectionEnd); } catch { /* of another type */ }
}
