// @ts-check
// The values as a table like that of a printed profile book, and the same table for other programs.

import { el, fill } from "./dom.js";
import { MILLIMETRES } from "./section_file.js";
import { numberText, unitText } from "./units.js";

/** Groups whose values take a solution. */
const SOLVED = new Set(["torsion", "shear"]);

/** "Wel,bottom" with its index below the line. @param {string} symbol */
export function symbolNode(symbol) {
    if (symbol === "alpha") return "α";
    const ratio = /^(\w+)\/(\w+),(\w)$/.exec(symbol);
    if (ratio) return ["W", el("sub", {}, "pl"), "/W", el("sub", {}, `el,${ratio[3]}`)];
    const parts = /^([AIWSbehimxy])(s)?(.+)?$/.exec(symbol);
    if (!parts || !(parts[2] ?? parts[3])) return symbol;
    return [parts[1], el("sub", {}, (parts[2] ?? "") + (parts[3] ?? "").replace(/^,/, ""))];
}

/** "1.188e+10" as 1.188·10¹⁰. @param {string} text */
export function powerNode(text) {
    const pieces = /^(.*?)e\+?(-?\d+)(.*)$/.exec(text);
    if (!pieces) return text.replace(/^-/, "−");
    const power = pieces[2].replace(/^(-?)0+(?=\d)/, "$1").replace("-", "−");
    return [`${pieces[1].replace(/^-/, "−")}·10`, el("sup", {}, power), powerNode(pieces[3])];
}

function numberNode(value) {
    const [number, margin] = value.text.split(/\s*±\s*/);
    return [el("span", { class: "number" }, powerNode(number)),
            margin && el("span", { class: "margin", title: boundsText(value) }, " ± ", powerNode(margin))];
}

function boundsText(value) {
    if (value.lower !== null && value.lower !== undefined) {
        return `between ${value.lower} and ${value.upper}`;
    }
    return value.error === null || value.error === undefined ? "" : `within ${value.error}`;
}

/** What a group's values are about. */
const NOTES = {
    bending: "about axes through G: x horizontal, y vertical, 1 and 2 principal",
    plastic: "about the lines parallel to these axes that halve the area",
    torsion: "M is the shear centre",
    shear: "stiffness areas for a force along x and y; static moments of one side of the axis",
};

/** What a row says in each column. @param {any} value @param {any} beside */
function cellsOf(value, beside) {
    return { value, beside, published: value.published_text, difference: value.difference_text };
}

/** @param {any} result @param {any} beside the result of the section beside this one; null: none */
export function tableOf(result, beside) {
    const other = new Map((beside?.groups ?? []).flatMap((group) => group.values)
        .map((value) => [value.key, value]));
    const groups = result.groups.map((group) => ({
        ...group, isPending: !result.isComplete && SOLVED.has(group.group),
        rows: group.values.map((value) => cellsOf(value, other.get(value.key))),
    }));
    // Two sections side by side take the room of what else could stand there.
    const hasPublished = !beside && groups.some((group) => group.rows.some((row) => row.published));
    return { groups, hasPublished, hasBeside: Boolean(beside) };
}

/** By how much the value of the section beside differs. @returns {string} */
export function besideDifference(value, beside) {
    if (!beside || value.number === null || beside.number === null) return "";
    if (value.unit === "deg" || value.number === 0 || value.unit !== beside.unit) return "";
    const percent = (100 * (beside.number - value.number)) / Math.abs(value.number);
    if (!Number.isFinite(percent) || Math.abs(percent) > 1e6) return "";
    const sign = percent > 0.005 ? "+" : percent < -0.005 ? "−" : "";
    return `${sign}${Math.abs(percent).toFixed(Math.abs(percent) < 10 ? 2 : 1)} %`;
}

function headOf(table, names) {
    const columns = ["Property", "Symbol", names[0], "Unit"];
    if (table.hasPublished) columns.push("Published", "Differs");
    if (table.hasBeside) columns.push(names[1], "Difference");
    else columns.push("Method");
    return columns;
}

/** @param {HTMLElement} container @param {any} result @param {any} beside @param {string[]} names
 *  of both sections */
export function showTable(container, result, beside, names) {
    const table = tableOf(result, beside);
    const columns = headOf(table, names);
    const head = el("thead", {}, el("tr", {}, columns.map((text) =>
        el("th", { scope: "col", class: `column-${text.toLowerCase().replace(/ .*/, "")}` }, text))));
    let reason = "";
    const isRepeated = ({ why_missing: why }) => {
        const isSame = Boolean(why) && why === reason;
        reason = why ?? "";
        return isSame;
    };
    const bodies = table.groups.map((group) => el("tbody", {},
        el("tr", { class: "group" }, el("th", { colspan: columns.length, scope: "rowgroup" },
                                         group.name,
                                         NOTES[group.group] && el("span", { class: "group-note" }, NOTES[group.group]))),
        group.rows.map((row) => rowNode({ ...row, isRepeated: isRepeated(row.value) }, table, group, columns.length))));
    const isTight = table.hasPublished || table.hasBeside;
    fill(container, el("table", { class: isTight ? "values-table tight" : "values-table" },
                       el("caption", { class: "hidden" }, "Values of the section"), head, bodies));
}

function rowNode(row, table, group, columns) {
    const { value } = row;
    const start = [el("th", { scope: "row" }, value.name),
                   el("td", { class: "symbol" }, symbolNode(value.symbol))];
    if (group.isPending) {
        return el("tr", { class: "pending" }, start,
                  el("td", { class: "figure-cell" }, "…"),
                  Array.from({ length: columns - 3 }, () => el("td")));
    }
    const isMissing = value.number === null || value.number === undefined;
    if (isMissing && !row.beside) {
        const why = row.isRepeated ? "not computed, as above" : `not computed: ${value.why_missing}`;
        return el("tr", { class: "missing" }, start, el("td", { colspan: columns - 2 }, why));
    }
    return el("tr", { "data-key": value.key }, start,
              el("td", { class: "figure-cell", title: value.why_missing || null }, isMissing ? "–" : numberNode(value)),
              el("td", { class: "unit" }, unitText(value.unit)),
              table.hasPublished && [
                  el("td", { class: "figure-cell" }, powerNode(row.published ?? "")),
                  el("td", { class: "figure-cell" }, (row.difference ?? "").replace("-", "−")),
              ],
              table.hasBeside && [
                  el("td", { class: "figure-cell" }, besideNode(row.beside)),
                  el("td", { class: "figure-cell" }, besideDifference(value, row.beside)),
              ],
              !table.hasBeside && el("td", { class: "method" }, value.method));
}

function besideNode(beside) {
    if (!beside) return "";
    return beside.number === null || beside.number === undefined ? "–" : numberNode(beside);
}

/** Elastic moduli of the parts of a composite section, in their own outermost fibres.
 *  @param {HTMLElement} container @param {any} result @param {string} unit of the values; empty: that
 *  of the section @param {string} own unit of the section */
export function showPartModuli(container, result, unit, own) {
    const parts = result?.parts ?? [];
    if (!parts.length) return fill(container);
    const shownUnit = unit || own;
    const factor = (MILLIMETRES[own] / MILLIMETRES[shownUnit]) ** 3;
    const keys = ["bottom", "top", "left", "right"].map((side) => `elastic_modulus_${side}`);
    fill(container, el("table", { class: "values-table part-moduli" },
        el("caption", {}, "Elastic moduli of the parts, ", unitText(`${shownUnit}^3`)),
        el("thead", {}, el("tr", {}, ["Part", "n", ...keys.map((key) => symbolNode(`Wel,${key.slice(16)}`))]
            .map((text) => el("th", { scope: "col" }, text)))),
        el("tbody", {}, parts.map((part) => el("tr", {}, el("th", { scope: "row" }, part.name),
            el("td", { class: "figure-cell" }, numberText(part.modular_ratio)),
            keys.map((key) => el("td", { class: "figure-cell" }, modulusText(part[key], factor))))))));
}

function modulusText(value, factor) {
    return typeof value?.value === "number" ? powerNode(numberText(value.value * factor)) : "–";
}

/** The words for methods that the table has, with what they mean.
 *  @param {HTMLElement} container @param {any} result */
export function showMethods(container, result) {
    if (!result?.methods) return fill(container);
    const used = new Set(result.groups.flatMap((group) => group.values)
        .map((value) => (value.method ?? "").split(/[ ,]/)[0]));
    const methods = result.methods.filter(({ word }) => used.has(word));
    const isOpen = container.querySelector("details")?.open;
    fill(container, el("details", { class: "methods", open: isOpen },
        el("summary", {}, "Methods and sources"),
        el("dl", {}, methods.map(({ word, sentence }) => [el("dt", {}, word), el("dd", {}, `${sentence}.`)]))));
}

/** The table as text for spreadsheets and as HTML for documents: numbers stand alone in their
 *  columns, with signs that other programs read.
 *  @param {any} result @param {any} beside @param {string[]} names
 *  @param {string} title of the section @param {string} stressUnit */
export function copiedTable(result, beside, names, title, stressUnit) {
    const table = tableOf(result, beside);
    const columns = headOf(table, names).flatMap((column, index) =>
        (index === 2 || (table.hasBeside && index === 4) ? [column, "±"] : [column]));
    const stresses = (result.stresses ?? []).map((stress) => cellsOf({ ...stress, unit: stressUnit }, null));
    const groups = [...table.groups, ...(stresses.length ? [{ name: "Stresses", rows: stresses }] : [])];
    const rows = groups.flatMap((group) => [[group.name], ...group.rows.map((row) => textsOf(row, table))])
        .map((row) => row.map((cell) => String(cell ?? "").replace(/−/g, "-")));
    const text = [[title], columns, ...rows].map((row) => row.join("\t")).join("\n") + "\n";
    const cells = (row) => (row.length > 1 ? row.map((cell) => el("td", {}, cell))
        : el("th", { colspan: columns.length, align: "left" }, row[0]));
    const node = el("table", {}, el("caption", {}, title), el("tr", {}, columns.map((column) => el("th", {}, column))),
                    rows.map((row) => el("tr", {}, cells(row))));
    return { text, html: node.outerHTML };
}

/** The engine's line of values with the largest stresses. @param {string} csv its head and its line
 *  @param {any[]} stresses @param {string} unit of the stresses */
export function withStresses(csv, stresses, unit) {
    if (!stresses.length) return csv;
    const [head, line] = csv.trimEnd().split("\n");
    const plain = unit.replace("²", "2");
    const names = stresses.map(({ key }) => `largest_${key}_stress [${plain}]`);
    const numbers = stresses.map(({ number }) => number ?? "");
    return `${[head, ...names].join(",")}\n${[line, ...numbers].join(",")}\n`;
}

/** A number and how far off it can be. @param {string} text */
function numbersOf(text) {
    const [number, margin = ""] = text.split(/\s*±\s*/);
    return [number, margin];
}

function textsOf(row, table) {
    const { value, beside } = row;
    const isMissing = value.number === null || value.number === undefined;
    const cells = [value.name, value.symbol, ...numbersOf(isMissing ? "" : value.text), value.unit ?? ""];
    if (table.hasPublished) cells.push(row.published ?? "", row.difference ?? "");
    if (table.hasBeside) cells.push(...numbersOf(beside?.text ?? ""), besideDifference(value, beside));
    const how = isMissing ? `not computed: ${value.why_missing}` : value.method;
    return table.hasBeside ? cells : [...cells, how];
}
