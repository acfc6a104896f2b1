// @ts-check
// The page: builds its pieces and shows the state in them.

import { Actions, forcesNeeded, isStress } from "./actions.js";
import { followAddress, restore } from "./address.js";
import { Board } from "./board.js";
import { BoardBar } from "./board_bar.js";
import { CataloguePanel } from "./catalogue_panel.js";
import { button, byId, el, fill, pictureOf } from "./dom.js";
import { EngineClient } from "./engine_client.js";
import { engineSource, makeWorker } from "./engine_source.js";
import { Evaluation, staleSection } from "./evaluation.js";
import { Figure } from "./figure.js";
import { Files, OriginPanel, acceptDrops } from "./files.js";
import { sentence, showFindings } from "./findings_panel.js";
import { ForcesPanel, showStresses } from "./forces_panel.js";
import { PartsPanel } from "./parts_panel.js";
import { MILLIMETRES, elementAt, elementsOf, emptySection, isEmpty, labelOf, pointerOf, titleOf, withPartOnTop } from "./section_file.js";
import { exampleOf, showShapes } from "./shapes_panel.js";
import { Store, isChanged } from "./store.js";
import { showMethods, showPartModuli, showTable } from "./values_table.js";

const store = new Store();

let silence = 0;

/** Says what was done, for eyes and ears; it goes by itself.
 *  @param {string} text @param {boolean} [isQuiet] what the screen shows anyway
 *  @param {any} [choice] a button beside it */
function say(text, isQuiet = false, choice = null) {
    const live = byId("live");
    live.classList.toggle("hidden", isQuiet);
    live.textContent = "";
    clearTimeout(silence);
    setTimeout(() => fill(live, text, " ", choice), 30);
    silence = setTimeout(() => { live.textContent = ""; }, choice ? 20_000 : 5000);
}

/** What is wrong stays above the figure until it is mended or closed. */
function showError(text, more = []) {
    const close = button("✕", () => fill(byId("messages")), { class: "icon", "aria-label": "Close the message" });
    fill(byId("messages"), el("div", { class: "message", role: "alert" }, el("p", {}, text, more), close));
}

function complain(error, source = "") {
    const of = error.source || source;
    const where = [of, error.place].filter(Boolean).join(", ");
    const text = error.problem ? `${where ? `${where}: ` : ""}${sentence(error.problem)}` : error.message;
    showError(text, error.mend ? [" ", el("span", { class: "mend" }, sentence(error.mend))] : []);
}

/** Says that a section cannot be computed, with a way to the part at fault. */
function showRefusal(error) {
    const element = elementAt(store.section, error.place ?? "");
    const index = elementsOf(store.section).findIndex((one) =>
        one.list === element?.list && one.index === element?.index);
    const place = element ? [labelOf(element), error.place.slice(pointerOf(element).length).replace(/[/_]/g, " ").trim()]
        .filter(Boolean).join(", ") : error.place;
    const problem = `${place ? `${place}: ` : ""}${sentence(error.problem ?? error.message)}`;
    showError(problem, [
        error.mend ? [" ", el("span", { class: "mend" }, sentence(error.mend))] : "",
        index >= 0 ? [" ", button("Show the part", () => store.set({ selected: index }), { class: "link" })] : "",
    ]);
}

function showResult(figure, state, before) {
    const { result, besideResult, history: { present: { section, beside } } } = state;
    const isSame = ["result", "finding", "besideResult", "history", "figure", "forces",
                    "tool"].every((key) => state[key] === before[key]);
    if (isSame) return;
    if (result?.error && result.error !== before.result?.error) showRefusal(result.error);
    if (!result?.error && (isChanged(state, before) || before.result?.error)) fill(byId("messages"));
    const pointOut = (index) => store.set({ finding: index === state.finding ? -1 : index });
    showFindings(byId("findings"), result, state.finding, pointOut);
    const stale = staleSection(state);
    const own = result?.groups ? result.of?.unit ?? section.unit : section.unit;
    const compared = besideResult?.of === beside && besideResult?.groups ? besideResult : null;
    const factor = beside ? MILLIMETRES[beside.unit] / MILLIMETRES[own] : 1;
    const span = compared?.box && result?.box ? widest(result.box, compared.box, factor) : null;
    figure.show(result, own, { finding: state.finding, span, isPale: Boolean(result?.error),
                                        caption: stale ? `The section before: ${titleOf(stale)}` : beside ? titleOf(section) : "",
                                        isEmpty: isEmpty(section) && state.tool !== "draw" });
    showBeside(compared, beside, span && span.map((length) => length / factor));
    showEngineFigure(state, section);
    if (result?.groups && !isEmpty(section)) {
        const names = beside ? [titleOf(stale ?? section), titleOf(beside)] : ["Value", ""];
        showTable(byId("values"), result, compared, names);
        if (stale) byId("values").prepend(el("p", { class: "stale-note" }, staleText(stale, section)));
    } else {
        fill(byId("values"), el("p", { class: "note" }, "The values of the section stand here."));
    }
    byId("values").classList.toggle("stale", Boolean(stale));
    showStresses(byId("stresses"), stale ? null : result, own);
    showPartModuli(byId("part-moduli"), stale ? null : result, state.unit, own);
    showMethods(byId("methods"), result);
}

function staleText(stale, section) {
    const before = titleOf(stale) === titleOf(section) ? "it had before its last change" : `of ${titleOf(stale)}, the section before`;
    return `Not the values of this section, which cannot be computed, but those ${before}.`;
}

/** Width and height that both boxes fit in; the other's lengths times the factor are in the unit of
 *  the one. */
function widest(one, other, factor) {
    return [0, 1].map((axis) =>
        Math.max(one[axis + 2] - one[axis], factor * (other[axis + 2] - other[axis])));
}

let besideFigure = null;

function showBeside(result, section, span) {
    const container = byId("figure");
    if (!section && besideFigure) {
        besideFigure.frame.remove();
        besideFigure = null;
    }
    if (!section) return;
    if (!besideFigure) besideFigure = new Figure(container, () => {});
    besideFigure.show(result ? { ...result, findings: [] } : null, section.unit,
                      { span, caption: titleOf(section) });
}

/** Blocks and contours are the engine's own figure. */
function showEngineFigure(state, section) {
    const { figure, result, forces } = state;
    const container = byId("engine-figure");
    const isShown = figure !== "section" && !isEmpty(section);
    container.hidden = !isShown;
    byId("figure").classList.toggle("replaced", isShown);
    if (!isShown) return;
    if (isStress(figure) && !Object.values(forces).some(Boolean)) {
        byId("forces-panel").open = true;
        return fill(container, el("p", { class: "note" }, forcesNeeded(section.unit)));
    }
    if (staleSection(state)) return fill(container, el("p", { class: "note" }, "The section cannot be computed."));
    const picture = result?.svg && result.figure === figure ? pictureOf(result.svg) : null;
    if (picture) {
        picture.removeAttribute("width");
        picture.removeAttribute("height");
        picture.setAttribute("role", "img");
    }
    const isKnown = result?.error || (result?.isComplete && result.figure === figure);
    const problem = sentence(result?.figureProblem?.problem ?? "There is nothing to show");
    fill(container, picture ?? el("p", { class: "note" }, isKnown ? problem : "Computing …"));
}

function addTabs() {
    const panels = {};
    const bar = el("div", { class: "tabs", role: "tablist", "aria-label": "Add" });
    const tabs = [["catalogue", "Catalogue"], ["shapes", "Shapes"]];
    const choose = (chosen, isFocused) => tabs.forEach(([key]) => {
        panels[key].hidden = key !== chosen;
        const tab = byId(`tab-${key}`);
        tab.setAttribute("aria-selected", String(key === chosen));
        tab.tabIndex = key === chosen ? 0 : -1;
        if (isFocused && key === chosen) tab.focus();
    });
    bar.append(...tabs.map(([key, text]) => button(text, () => choose(key, false), {
        id: `tab-${key}`, role: "tab", "aria-controls": `panel-${key}` })));
    bar.addEventListener("keydown", (event) => {
        if (!["ArrowLeft", "ArrowRight"].includes(event.key)) return;
        choose(panels.catalogue.hidden ? "catalogue" : "shapes", true);
    });
    for (const [key] of tabs) {
        panels[key] = el("div", { id: `panel-${key}`, role: "tabpanel", "aria-labelledby": `tab-${key}` });
    }
    byId("add").append(bar, ...Object.values(panels));
    choose("catalogue", false);
    return panels;
}

/** Shows a part alone, or adds it to what is there. */
function take(part, isAdded) {
    const { section } = store;
    const isReplaced = !isAdded && !isEmpty(section);
    if (!isAdded || isEmpty(section)) {
        store.replace({ ...emptySection(section.unit), parts: [part] });
    } else {
        const changed = withPartOnTop(section, part);
        store.edit(changed, "", { selected: elementsOf(changed).length - 1, tool: "select" });
    }
    const name = part.profile ?? part.shape;
    if (isReplaced) say(`${name} took the place of ${titleOf(section)}. Undo brings that back; “+” adds to it.`);
    else say(`${name} ${isAdded ? "was added" : "is shown"}.`, true);
}

async function start() {
    const source = await engineSource();
    const evaluation = new Evaluation(store, () => new EngineClient(makeWorker, source));
    const { engine } = evaluation;
    store.fail = complain;
    const figure = new Figure(byId("figure"), (index) => store.set({ finding: index }));
    byId("figure").after(el("div", { id: "engine-figure", class: "engine-figure", hidden: true }));
    const board = new Board(figure, store);
    new BoardBar(byId("board-bar"), store, board, say);
    const files = new Files(store, engine, complain);
    const originPanel = el("section", { class: "panel", hidden: true });
    byId("add").after(originPanel);
    new OriginPanel(originPanel, store, files);
    new PartsPanel(byId("parts"), store, () => store.state.shapes, say);
    new ForcesPanel(byId("forces"), store);
    store.watch((state, before) => showResult(figure, state, before));
    acceptDrops(files, byId("drop-veil"), say);
    const panels = addTabs();
    const catalogue = new CataloguePanel(panels.catalogue, engine, (name, isAdded) => take({ profile: name }, isAdded));
    await restore(store, complain);
    followAddress(store, complain);
    const version = await engine.call({ op: "version" });
    new Actions({ store, evaluation, figure: () => figure, board, files, version, say, complain });
    const { shapes } = await engine.call({ op: "shapes" });
    store.set({ shapes });
    showShapes(panels.shapes, shapes, (shape, isAdded) => take(exampleOf(shape, store.section.unit), isAdded));
    await catalogue.load();
    fill(byId("footer"), `HalvornSectionTools ${version.version}. Works offline: nothing leaves this computer.`);
}

start().catch((error) => showError(`The engine could not be started: ${error.message}`));
