// @ts-check
// The buttons of the page and their keys.

import { lengthsOf } from "./annotations.js";
import { button, byId, el, fill } from "./dom.js";
import { copy, fileName, save } from "./files.js";
import { figureOf, isSettled, pictureText, requestFor } from "./evaluation.js";
import { UNITS, emptySection, fileText, isEmpty, titleOf } from "./section_file.js";
import { digestOf } from "./share.js";
import { fillSheet } from "./sheet.js";
import { copiedTable, withStresses } from "./values_table.js";
import { forceUnits, numberText } from "./units.js";
import { isChanged } from "./store.js";
import { canMove, inUnit } from "./whole.js";

const FIGURES = [["section", "Section"], ["x", "Stress blocks about x"], ["y", "Stress blocks about y"],
    ["normal", "Normal stress"], ["shear", "Shear stress"], ["von_mises", "Von Mises stress"]];

export class Actions {
    /** @param {{store: any, evaluation: any, figure: any, board: any, files: any, version: any,
     *  say: (text: string, isQuiet?: boolean, choice?: any) => void, complain: (error: any) => void}} parts */
    constructor(parts) {
        const { store, evaluation, figure, board, files, version, say, complain } = parts;
        this.store = store;
        this.evaluation = evaluation;
        this.figure = figure;
        this.files = files;
        this.board = board;
        this.version = version;
        this.say = say;
        this.complain = complain;
        this.digest = { section: null, text: "" };
        this.undo = button("Undo", () => store.undo(), { title: "Ctrl+Z" });
        this.redo = button("Redo", () => store.redo(), { title: "Ctrl+Y" });
        fill(byId("actions"),
            button("New", () => store.replace(emptySection(store.section.unit))),
            button("Open…", () => byId("file-input").click(), { title: "DXF, CSV or JSON; or drop it on the page" }),
            this.undo, this.redo,
            this.menu("Save", [["Section file (JSON)", () => this.saveSection()],
                ["Values (CSV)", () => this.saveValues()],
                ["Values (JSON)", () => this.saveText("application/json", "-values.json",
                                                      async () => (await this.written("json")).json)],
                ["Figure (SVG)", () => this.saveFigure()]]),
            button("Copy link", () => this.copyLink(), { title: "The link holds the section itself" }),
            button("Print", () => this.print(), { title: "A sheet with figure, values, version and hash" }));
        byId("file-input").addEventListener("change", (event) => {
            const [file] = event.target.files;
            if (file) this.files.open(file);
            event.target.value = "";
        });
        this.nameAndUnit();
        this.figureBar();
        this.valuesBar();
        document.addEventListener("keydown", (event) => this.key(event));
        window.addEventListener("beforeprint", () => this.fillSheet());
        store.watch((state, before) => this.show(state, before));
    }

    menu(text, entries) {
        const menu = el("details", { class: "menu" }, el("summary", { role: "button" }, text));
        menu.append(el("div", { class: "menu-entries" }, entries.map(([label, act]) =>
            button(label, () => { menu.open = false; act(); }))));
        menu.addEventListener("keydown", (event) => {
            if (event.key !== "Escape" || !menu.open) return;
            menu.open = false;
            menu.querySelector("summary").focus();
        });
        document.addEventListener("click", (event) => {
            if (!menu.contains(/** @type {Node} */ (event.target))) menu.open = false;
        });
        return menu;
    }

    nameAndUnit() {
        const { store } = this;
        const name = byId("section-name");
        name.addEventListener("input", () => {
            const { name: _, ...rest } = store.section;
            store.edit(name.value ? { ...rest, name: name.value } : rest, "name");
        });
        const unit = byId("section-unit");
        fill(unit, UNITS.map((one) => el("option", { value: one }, one)));
        unit.addEventListener("change", () => {
            const { section } = store;
            store.edit({ ...section, unit: unit.value });
            if (!isEmpty(section)) this.sayUnit(section, unit.value);
        });
    }

    /** What a change of the unit did, and the other thing that it may have been meant to do. */
    sayUnit(section, unit) {
        const { store } = this;
        const { width } = lengthsOf(store.state.result, section.unit);
        const shown = width === undefined ? "" : numberText(width);
        const example = shown && `: what was ${shown} ${section.unit} wide is ${shown} ${unit} wide`;
        const changed = store.section;
        const convert = canMove(section) && button("Convert the numbers", () => {
            if (store.section === changed) store.edit(inUnit(section, unit, store.state.shapes));
            this.say(`The section has its size, in ${unit}.`);
        });
        this.say(`Only the unit was changed, from ${section.unit} to ${unit}; the numbers stay${example}.`, false, convert);
    }

    figureBar() {
        const { store, figure } = this;
        this.kind = el("select", { "aria-label": "What the figure shows", on: {
            change: () => store.set({ figure: this.kind.value }) } },
            FIGURES.map(([value, text]) => el("option", { value }, text)));
        this.drawButton = button("Draw", () => store.set(store.state.tool === "draw"
            ? { tool: "select", draft: null } : { tool: "draw", draft: null, selected: -1, figure: "section" }),
            { "aria-pressed": "false", title: "Draw an outline, a hole or a wall point by point" });
        fill(byId("figure-bar"), this.kind, this.drawButton, el("span", { class: "spacer" }),
             button("−", () => figure().zoom(0.8), { "aria-label": "Zoom out", class: "icon" }),
             button("+", () => figure().zoom(1.25), { "aria-label": "Zoom in", class: "icon" }),
             button("Fit", () => figure().fit()));
    }

    valuesBar() {
        const { store } = this;
        this.unit = el("select", { id: "values-unit", on: { change: () => store.set({ unit: this.unit.value }) } });
        this.compare = button("Compare", () => store.commit(store.work.beside
            ? { ...store.work, beside: null } : { ...store.work, beside: store.section }),
            { title: "Keep this section beside the next one" });
        fill(byId("values-actions"), el("label", { for: "values-unit" }, "in"), this.unit, this.compare,
             button("Copy table", () => this.copyTable()));
    }

    names() {
        const { section, beside } = this.store.work;
        return [beside ? titleOf(section) : "Value", beside ? titleOf(beside) : ""];
    }

    show(state, before) {
        const { history: { past, future, present } } = state;
        const { section } = present;
        this.undo.disabled = past.length === 0;
        this.redo.disabled = future.length === 0;
        const name = byId("section-name");
        if (document.activeElement !== name) name.value = section.name ?? "";
        byId("section-unit").value = section.unit;
        this.kind.value = state.figure;
        this.drawButton.setAttribute("aria-pressed", String(state.tool === "draw"));
        this.compare.textContent = present.beside ? "End comparison" : "Compare";
        this.compare.disabled = isEmpty(section) && !present.beside;
        if (state.result?.isComplete && state.result !== before.result && this.digest.section !== section) {
            this.follow(section);
        }
        if (isChanged(state, before) || state.unit !== before.unit) {
            fill(this.unit, el("option", { value: "" }, `${section.unit}, as the section`),
                 UNITS.map((one) => el("option", { value: one }, one)));
            this.unit.value = state.unit;
            document.title = `${titleOf(section)} – Halvorn sections`;
        }
    }

    key(event) {
        if (!(event.ctrlKey || event.metaKey) || event.altKey) return;
        const isText = /^(INPUT|TEXTAREA)$/.test(event.target.tagName) && event.target.type !== "checkbox";
        const key = event.key.toLowerCase();
        const takeBack = () => this.store.state.tool === "draw" && this.board.takeBack();
        if (key === "z" && !event.shiftKey && !isText) this.act(event, () => takeBack() || this.store.undo());
        else if ((key === "y" || (key === "z" && event.shiftKey)) && !isText) this.act(event, () => this.store.redo());
        else if (key === "s") this.act(event, () => this.saveSection());
        else if (key === "o") this.act(event, () => byId("file-input").click());
        else if (key === "p") this.act(event, () => this.print());
    }

    act(event, action) {
        event.preventDefault();
        action();
    }

    // ---- out of the page

    saveSection() {
        if (!this.isThere()) return;
        try {
            save(fileName(this.store.section, "json"), "application/json", fileText(this.store.section));
        } catch (error) {
            this.complain(error);
        }
    }

    isThere() {
        const is = !isEmpty(this.store.section);
        if (!is) this.say("There is no section yet.");
        return is;
    }

    /** What the engine writes of the section, with the stresses. @param {string} want
     *  @param {string} [figure] */
    async written(want, figure = "section") {
        const { state, section } = this.store;
        const request = requestFor(state, section, true, [want]);
        delete request.unit;
        return this.evaluation.solver.call(Object.assign(request, figureOf(figure, request)));
    }

    /** @param {string} type @param {string} ending of the file's name
     *  @param {() => Promise<string>} write */
    async saveText(type, ending, write) {
        if (!this.isThere()) return;
        try {
            const { section } = this.store;
            save(fileName(section, "x").replace(/\.x$/, ending), type, await write());
        } catch (error) {
            this.complain(error);
        }
    }

    saveValues() {
        return this.saveText("text/csv", ".csv", async () => {
            const { unit } = this.store.section;
            const { csv, stresses } = await this.written("csv");
            return withStresses(csv, stresses ?? [], forceUnits(unit).stress);
        });
    }

    /** The figure that is shown. */
    saveFigure() {
        const { state, section } = this.store;
        return this.saveText("image/svg+xml", ".svg", async () => {
            const answer = await this.written("svg", state.figure);
            if (isStress(state.figure) && !answer.stresses) throw new Error(forcesNeeded(section.unit));
            return pictureText(answer.svg, state);
        });
    }

    /** Waits for the solution. @returns {Promise<boolean>} whether there are values of the section */
    async hasValues() {
        if (!this.isThere()) return false;
        if (!isSettled(this.store.state)) this.say("Torsion, warping and shear are still being computed.");
        await this.evaluation.settled();
        const { result } = this.store.state;
        if (result?.error) this.complain(result.error);
        return Boolean(result?.groups && !result.error);
    }

    async copyTable() {
        if (!await this.hasValues()) return;
        const { result, besideResult } = this.store.state;
        const { section, beside: other } = this.store.work;
        const beside = other && besideResult?.of === other && besideResult.groups ? besideResult : null;
        const isCopied = copy(copiedTable(result, beside, this.names(), titleOf(section), forceUnits(section.unit).stress));
        this.say(isCopied ? "The table is on the clipboard." : "The browser did not let the page copy.");
    }

    copyLink() {
        // The address follows with a little delay.
        setTimeout(() => {
            const isCopied = copy({ text: location.href, html: "" });
            this.say(!location.hash ? "There is no link: no section yet, or one too large for an address."
                : isCopied ? "The link is on the clipboard; it holds the section itself." : "The browser did not let the page copy.");
        }, 500);
    }

    async print() {
        if (!await this.hasValues()) return;
        const { section } = this.store;
        this.digest = { section, text: await digestOf(fileText(section)) };
        window.print();
    }

    /** Fills the sheet; whoever prints, by this page's button or the browser's own command. */
    fillSheet() {
        const { store } = this;
        const { state, section } = store;
        if (isEmpty(section) || !state.result?.groups || state.result.error || state.result.of !== section) {
            return fill(byId("sheet"), el("header", {}, el("h1", {}, titleOf(section))),
                        el("p", { class: "sheet-refusal" }, this.whyNoSheet()));
        }
        fillSheet(byId("sheet"), { state, section, version: this.version,
            digest: this.digest.section === section ? this.digest.text : "",
            beside: store.work.beside ? state.besideResult : null });
    }

    whyNoSheet() {
        const { state: { result }, section } = this.store;
        if (isEmpty(section)) return "There is no section.";
        return result?.error ? `The section cannot be computed: ${result.error.message}`
            : "The section is still being computed; print it again.";
    }

    /** Computes the digest of the section when the hand rests: printing does not wait for it. */
    async follow(section) {
        try {
            this.digest = { section, text: await digestOf(fileText(section)) };
        } catch { /* what has no file text is not printed */ }
    }
}

/** Whether a figure is of stresses. @param {string} figure */
export function isStress(figure) {
    return !["section", "x", "y"].includes(figure);
}

/** What is said where a figure of stresses has no forces. @param {string} unit */
export function forcesNeeded(unit) {
    const { force, moment } = forceUnits(unit);
    return `Type forces in ${force} and moments in ${moment} under “Forces and options”.`;
}
