// @ts-check
// What stands below the figure: typed coordinates while drawing, the corner that is chosen.

import { button, byId, el, fill } from "./dom.js";
import { choiceField, numberField, refill } from "./fields.js";
import { hasOwnPoints, ownPoints, placed } from "./place.js";
import { withItem } from "./section_file.js";
import { typedPoint } from "./snap.js";
import { withRadii } from "./board.js";

const KINDS = [["solid", "solid"], ["hole", "hole"], ["open wall", "open wall"], ["closed wall", "closed wall"]];

export class BoardBar {
    /** @param {HTMLElement} container @param {import("./store.js").Store} store
     *  @param {import("./board.js").Board} board @param {(text: string, isQuiet?: boolean) => void} say */
    constructor(container, store, board, say) {
        this.container = container;
        this.store = store;
        this.board = board;
        this.say = say;
        this.typed = el("input", {
            type: "text", class: "coordinates-input", placeholder: "x, y   @dx, dy   length < degrees",
            "aria-label": "Coordinates of the next point; empty closes the outline", autocomplete: "off",
            on: { keydown: (event) => this.key(event) } });
        store.watch((state, before) => {
            if (["tool", "draft", "selected", "corner", "history", "drawing"].some((key) =>
                state[key] !== before[key])) this.show(state, before);
        });
    }

    show(state, before) {
        const hadFocus = document.activeElement === this.typed;
        if (state.tool === "draw") this.showDrawing(state);
        else this.showCorner(state);
        if (state.tool === before.tool || !before.tool) return;
        // Fingers would have their keyboard in the way.
        const isFine = matchMedia("(pointer: fine)").matches;
        if (state.tool === "draw" && isFine) this.typed.focus();
        else if (hadFocus) byId("figure-bar").querySelector("[aria-pressed]")?.focus();
    }

    showDrawing({ drawing, draft }) {
        const count = draft?.points.length ?? 0;
        const hadFocus = document.activeElement === this.typed;
        const set = (change) => this.store.set({ drawing: { ...drawing, ...change } });
        const { unit } = this.store.section;
        fill(this.container,
             choiceField("Draw", drawing.kind, /** @type {any} */ (KINDS), (kind) => set({ kind }), { name: "kind" }),
             drawing.kind.endsWith("wall") && numberField("Thickness", drawing.thickness,
                 (thickness) => thickness && set({ thickness }), { name: "thickness", unit, isRequired: true }),
             el("div", { class: "field grow" }, el("label", {}, `Point ${count + 1}, ${unit}`), this.typed),
             button("Add point", () => this.add(), {}),
             button("Take back", () => this.board.takeBack(), { disabled: !count }),
             button(drawing.kind === "open wall" ? "Finish" : "Close outline", () => this.close(), {
                 class: "primary", disabled: count < (drawing.kind === "open wall" ? 2 : 3) }),
             button("Stop", () => this.board.stop()));
        if (hadFocus) this.typed.focus();
    }

    showCorner(state) {
        const element = this.store.chosen;
        const item = element?.item;
        if (!item || !hasOwnPoints(item) || !(state.corner >= 0) || state.corner >= ownPoints(item).length) {
            fill(this.container, item && hasOwnPoints(item)
                ? el("p", { class: "note" }, "Drag a corner, or click one for its coordinates and fillet. Double-click an edge for a new corner.")
                : null);
            return;
        }
        const { corner } = state;
        const { unit } = this.store.section;
        const [x, y] = placed(item, ownPoints(item)[corner]);
        const radii = item.radii ?? item.wall?.radii ?? [];
        const clean = (number) => Number(number.toPrecision(12));
        const move = (point) => this.board.setCorner(corner, point, `corner ${corner}`);
        refill(this.container, [
            el("span", { class: "board-title" }, `Corner ${corner + 1}`),
            numberField("x", clean(x), (value) => move([value, y]), { name: "corner-x", unit, isRequired: true }),
            numberField("y", clean(y), (value) => move([x, value]), { name: "corner-y", unit, isRequired: true }),
            numberField("Fillet", radii[corner] || null, (radius) => this.setRadius(corner, radius ?? 0),
                        { name: "corner-radius", unit, placeholder: "0" }),
            button("Delete corner", () => this.board.removeCorner(corner)),
        ]);
    }

    setRadius(corner, radius) {
        const element = this.store.chosen;
        const { item } = element;
        const before = item.radii ?? item.wall?.radii ?? [];
        const radii = ownPoints(item).map((_, index) => (index === corner ? radius : before[index] ?? 0));
        this.store.edit(withItem(this.store.section, element, withRadii(item, radii)), `fillet ${corner}`);
    }

    add() {
        const points = this.store.state.draft?.points ?? [];
        const point = typedPoint(this.typed.value, points[points.length - 1] ?? null);
        this.typed.setAttribute("aria-invalid", String(!point));
        if (!point) {
            this.say("This is no point: write x, y, or @dx, dy from the last point.");
            return;
        }
        this.typed.value = "";
        this.board.add(point);
        this.say(`Point ${points.length + 1} at ${point.join(", ")}`, true);
    }

    close() {
        if (!this.board.finish()) this.say("An outline needs at least three points.");
    }

    key(event) {
        if (event.key === "Escape") {
            this.board.stop();
        } else if (event.key === "Backspace" && !this.typed.value) {
            this.board.takeBack();
        } else if (event.key === "Enter") {
            event.preventDefault();
            if (this.typed.value.trim()) this.add();
            else this.close();
        }
    }
}
