// @ts-check
// The list of what the section draws, and the form of the one that is chosen.

import { lengthsOf } from "./annotations.js";
import { button, el, fill } from "./dom.js";
import { refill } from "./fields.js";
import { freeWhereItLies } from "./outlines.js";
import { partForm } from "./part_form.js";
import { elementsOf, isEmpty, labelOf, withPart, without } from "./section_file.js";
import { isChanged } from "./store.js";
import { canMove, movedWhole, turnedWhole } from "./whole.js";

/** What can be done with the section as a whole. */
const WHOLE = /** @type {const} */ ([
    ["left", "↺", "Turn the section by 90° counter-clockwise"],
    ["right", "↻", "Turn the section by 90° clockwise"],
    ["mirrorX", "⇅", "Mirror the section, top to bottom"],
    ["mirrorY", "⇄", "Mirror the section, left to right"]]);

export class PartsPanel {
    /** @param {HTMLElement} container @param {import("./store.js").Store} store
     *  @param {() => import("./part_form.js").Shape[]} shapes
     *  @param {(text: string, isQuiet?: boolean) => void} say */
    constructor(container, store, shapes, say) {
        this.store = store;
        this.shapes = shapes;
        this.say = say;
        this.focus = -1;  // the row that has it after the next showing
        this.list = el("ol", { class: "parts-list", on: { keydown: (event) => this.key(event) } });
        this.form = el("form", { class: "part-form", "aria-label": "The chosen part",
                                 on: { submit: (event) => event.preventDefault() } });
        this.whole = el("div", { class: "field buttons whole", role: "group", "aria-label": "Whole section" },
            WHOLE.map(([what, text, title]) => button(text, () => this.turn(what), { title, "aria-label": title })),
            button("G to 0, 0", () => this.centre(), { title: "Move the centre of gravity to the origin" }));
        container.append(this.list, this.whole, this.form);
        store.watch((state, before) => this.show(state, before));
    }

    show(state, before) {
        if (!isChanged(state, before) && state.selected === before.selected &&
            state.shapes === before.shapes && state.result?.error === before.result?.error) return;
        const { section } = this.store;
        const place = state.result?.error?.place ?? "";
        fill(this.list, elementsOf(section).map((element, index) => this.row(element, index, place)),
             isEmpty(section)
                 ? el("li", { class: "note" }, "Nothing yet: pick a profile or a shape above, draw, or drop a file.")
                 : null);
        this.passFocus();
        const chosen = this.store.chosen;
        refill(this.form, chosen ? partForm({
            section, element: chosen, shapes: this.shapes(),
            edit: (changed, name) => this.store.edit(changed, name),
            now: () => this.store.section,
            free: (part) => this.free(part),
        }).concat(this.buttons(chosen)) : []);
        this.form.hidden = !chosen;
        this.whole.hidden = isEmpty(section) || !canMove(section);
    }

    turn(what) {
        this.store.edit(turnedWhole(this.store.section, what), "");
    }

    centre() {
        const { result } = this.store.state;
        const { centroid_x: x, centroid_y: y } = lengthsOf(result, this.store.section.unit);
        if (x !== undefined && y !== undefined) this.store.edit(movedWhole(this.store.section, [-x, -y]), "");
    }

    row(element, index, place) {
        const { store } = this;
        const isChosen = index === store.state.selected;
        const own = `/${element.list}/${element.index}`;
        const isWrong = place === own || place.startsWith(`${own}/`);
        const choose = () => store.set({ selected: isChosen ? -1 : index });
        return el("li", { class: `${isChosen ? "chosen" : ""}${isWrong ? " wrong" : ""}` },
            el("button", { type: "button", class: "part-name", "aria-expanded": String(isChosen),
                           on: { click: choose } },
               el("span", {}, labelOf(element)), " ",
               el("span", { class: "part-what" }, describe(element))),
            button("✕", () => this.remove(element),
                { class: "icon", title: "Delete", "aria-label": `Delete ${labelOf(element)}` }));
    }

    buttons(element) {
        return el("div", { class: "field buttons" },
            element.list === "parts" && button("Duplicate", () => this.duplicate(element)),
            button("Delete", () => this.remove(element)));
    }

    duplicate(element) {
        const { name, ...copy } = element.item;
        const section = withPart(this.store.section, copy);
        this.store.edit(section, "", { selected: elementsOf(section).length - 1 });
    }

    remove(element) {
        const { section } = this.store;
        this.focus = elementsOf(section).findIndex(({ item }) => item === element.item);
        const freed = [];
        const changed = without(section, element, (part) => {
            freed.push(part);
            return this.free(part);
        });
        this.store.edit(changed, "", { selected: -1 });
        const names = freed.map((part) => labelOf({ list: "parts", index: section.parts.indexOf(part), item: part }));
        const stay = this.store.state.outlined === section ? "stays where it was" : "lies at the origin";
        this.say(`${labelOf(element)} was deleted.${freed.length ? ` What stood on it ${stay}: ${names.join(", ")}.` : ""}`,
                 !freed.length);
    }

    /** @param {import("./section_file.js").Part} part that stands on another */
    free(part) {
        return freeWhereItLies(this.store.section, this.store.places, part);
    }

    /** Where a row was deleted the focus goes to the one that has its place. */
    passFocus() {
        if (this.focus < 0) return;
        const rows = this.list.querySelectorAll("button.part-name");
        /** @type {any} */ (rows[Math.min(this.focus, rows.length - 1)] ?? document.getElementById("profile-search"))?.focus();
        this.focus = -1;
    }

    key(event) {
        if (event.key !== "Delete") return;
        const row = [...this.list.children].findIndex((one) => one.contains(event.target));
        const element = elementsOf(this.store.section)[row];
        if (element) this.remove(element);
    }
}

/** What a part is and where, in a few words. */
function describe({ item, list }) {
    const what = item.kind === "hole" ? "hole" : list === "polyline" ? "polyline" : "";
    const drawn = item.profile ?? item.shape ?? "";
    const kind = item.name && item.name !== drawn ? drawn : "";
    const turned = item.rotate ? `${item.rotate}°` : "";
    const on = item.on ? `${item.gap ? "beside" : "on"} ${item.on}` : "";
    const row = item.repeat ? `× ${item.repeat.count}` : "";
    const ratio = item.modular_ratio ? `n = ${item.modular_ratio}` : "";
    return [what, kind, on, turned, item.mirror ? "mirrored" : "", row, ratio].filter(Boolean).join(" · ");
}
