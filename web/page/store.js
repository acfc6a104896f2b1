// @ts-check
// The state of the page: one value, replaced at every change. What shows it is told once a frame.

import { edited, historyOf, redone, undone } from "./history.js";
import { elementsOf, emptySection } from "./section_file.js";

/** @typedef {import("./section_file.js").SectionFile} SectionFile */
/** What a section was read from, with what the reader had to say.
 *  @typedef {{name: string, format: string, text: string, layers: {name: string, text: string}[],
 *  chosen: string[]|null, unit: string, join?: number|null, findings: any[]}} Origin */
/** What undo goes back through.
 *  @typedef {{section: SectionFile, beside: SectionFile|null, origin: Origin|null}} Work */
/** @typedef {{history: import("./history.js").History<Work>, selected: number, unit: string,
 *  options: Record<string, any>, forces: Record<string, number>, figure: string, tool: string,
 *  result: any, besideResult: any, finding: number, [key: string]: any}} State */

/** @returns {State} */
export function initialState() {
    return {
        history: historyOf({ section: emptySection(), beside: null, origin: null }),
        selected: -1,  // among elementsOf; -1: none
        unit: "",  // of the values; empty: that of the section
        options: {},
        forces: {},  // as typed
        figure: "section",  // or what the engine's figure shows
        tool: "select",  // or "draw"
        draft: null,  // the points being drawn
        drawing: { kind: "solid", thickness: 5 },  // what they become
        outlines: [],  // of each element where it lies; none of a single one
        outlined: null,  // the section that they are of
        corner: -1,  // of the chosen part
        shapes: [],  // the registry
        result: null,
        besideResult: null,
        finding: -1,  // that is pointed out in the figure
    };
}

export class Store {
    constructor() {
        this.state = initialState();
        /** @type {((state: State, before: State) => void)[]} */
        this.views = [];
        this.known = 0;  // how many of them have been shown a state
        this.shown = null;
        this.frame = 0;
        /** @type {(error: any) => void} */
        this.fail = (error) => { throw error; };
    }

    /** @returns {Work} */
    get work() {
        return this.state.history.present;
    }

    get section() {
        return this.work.section;
    }

    /** Where the elements lie, as far as it is known of the section as it is.
     *  @returns {import("./outlines.js").Outline[]} */
    get places() {
        return this.state.outlined === this.section ? this.state.outlines : [];
    }

    /** The element that is chosen; undefined: none. */
    get chosen() {
        return elementsOf(this.section)[this.state.selected];
    }

    /** @param {Partial<State>} change */
    set(change) {
        // A corner is chosen of the part that is.
        const isOther = change.selected !== undefined && change.selected !== this.state.selected;
        this.state = { ...this.state, ...(isOther && { corner: -1 }), ...change };
        if (!this.frame) this.frame = requestAnimationFrame(() => this.show());
    }

    show() {
        this.frame = 0;
        const before = this.shown;
        this.shown = this.state;
        for (const [index, view] of this.views.entries()) {
            const isFirst = index >= this.known;
            try {
                view(this.state, isFirst || !before ? /** @type {any} */ ({}) : before);
            } catch (error) {
                this.fail(error);  // the other views go on
            }
        }
        this.known = this.views.length;
    }

    /** Calls a view at the next frame, without a state before, and after every change.
     *  @param {(state: State, before: State) => void} view */
    watch(view) {
        this.views.push(view);
        if (!this.frame) this.frame = requestAnimationFrame(() => this.show());
    }

    /** An edit of the section that can be undone.
     *  @param {SectionFile} section @param {string} [edit] joins edits of one name
     *  @param {Partial<State>} [change] of the rest of the state */
    edit(section, edit = "", change = {}) {
        this.commit({ ...this.work, section }, edit, change);
    }

    /** @param {Work} work @param {string} [edit] @param {Partial<State>} [change] */
    commit(work, edit = "", change = {}) {
        this.set({ history: edited(this.state.history, work, edit), ...change });
    }

    /** Another section altogether. @param {SectionFile} section @param {Origin|null} [origin] */
    replace(section, origin = null) {
        const count = elementsOf(section).length;
        this.commit({ ...this.work, section, origin }, "", {
            selected: count === 1 ? 0 : -1, corner: -1, finding: -1, tool: "select",
        });
    }

    undo() {
        this.go(undone(this.state.history));
    }

    redo() {
        this.go(redone(this.state.history));
    }

    go(history) {
        const count = elementsOf(history.present.section).length;
        const selected = this.state.selected < count ? this.state.selected : -1;
        this.set({ history, selected, corner: -1, finding: -1 });
    }
}

/** Whether the section or another part of the work differs between two states.
 *  @param {State} state @param {State} before @param {keyof Work} [key] */
export function isChanged(state, before, key = "section") {
    return state.history.present[key] !== before.history?.present[key];
}
