// @ts-check
// The drawing board over the figure: outlines point by point, corners that can be dragged.

import { fill, svg } from "./dom.js";
import { hasOwnPoints, ownPoints, placed, unplaced, withOwnPoints } from "./place.js";
import { elementsOf, withItem, withPart } from "./section_file.js";
import { materialPath } from "./annotations.js";
import { snappedShift } from "./outlines.js";
import { gridStep, snapped } from "./snap.js";
import { panned, toPlane, toScreen, zoomed } from "./viewport.js";

/** A press that moves less is a click [pixels]. */
const CLICK = 4;

/** How near a moved part's corner has to come to another's [pixels]. */
const SNAP = 8;

/** Handles nearer than this would cover each other [pixels]. */
const LEAST_APART = 9;

/** @typedef {import("./snap.js").Point} Point */

export class Board {
    /** @param {import("./figure.js").Figure} figure @param {import("./store.js").Store} store */
    constructor(figure, store) {
        this.figure = figure;
        this.store = store;
        this.pointers = new Map();
        this.drag = null;
        this.hover = null;
        this.frame = 0;
        const { svg: area } = figure;
        area.addEventListener("pointerdown", (event) => this.down(event));
        area.addEventListener("pointermove", (event) => this.move(event));
        area.addEventListener("pointerup", (event) => this.up(event));
        area.addEventListener("pointercancel", (event) => this.end(event));
        area.addEventListener("pointerleave", () => this.setHover(null));
        area.addEventListener("dblclick", (event) => this.insert(event));
        figure.frame.addEventListener("keydown", (event) => this.key(event));
        figure.listeners.push(() => this.draw());
        store.watch((state, before) => {
            if (state.tool !== before.tool || state.draft !== before.draft ||
                state.selected !== before.selected || state.corner !== before.corner ||
                state.history !== before.history) this.draw();
            if (state.outlines !== before.outlines || state.selected !== before.selected ||
                state.tool !== before.tool) this.drawParts(/** @type {any} */ (state));
            area.classList.toggle("drawing", state.tool === "draw");
        });
    }

    /** The corners of the chosen part in the section; none where they cannot be dragged.
     *  @returns {Point[]} */
    get corners() {
        const item = this.store.chosen?.item;
        return item && hasOwnPoints(item) ? ownPoints(item).map((point) => placed(item, point)) : [];
    }

    /** What the pointer snaps to: corners of all parts that have points, and those being drawn. */
    snapPoints(except = -1) {
        const points = [...(this.store.state.draft?.points ?? [])];
        const { selected } = this.store.state;
        elementsOf(this.store.section).forEach(({ item }, index) => {
            if (!hasOwnPoints(item) || ownPoints(item).length > 500) return;
            ownPoints(item).forEach((point, corner) => {
                if (index !== selected || corner !== except) points.push(placed(item, point));
            });
        });
        return points;
    }

    // ---- pointers

    down(event) {
        if (event.button > 1 || event.target.closest("[data-finding]")) return;
        this.figure.svg.setPointerCapture(event.pointerId);
        this.figure.frame.focus(/** @type {any} */ ({ preventScroll: true, focusVisible: false }));
        const pixel = this.figure.pixelOf(event);
        this.pointers.set(event.pointerId, pixel);
        const corner = Number(event.target.dataset?.corner ?? -1);
        this.pressedEdge = Number(event.target.dataset?.edge ?? -1);
        const element = Number(event.target.dataset?.element ?? -1);
        const { selected, outlines } = this.store.state;
        const isOwn = element >= 0 && element === selected && event.button === 0;
        if (this.pointers.size === 2) this.drag = null;
        else this.drag = { start: pixel, last: pixel, corner: event.button === 0 ? corner : -1, isMoved: false,
                           element, outlines, part: isOwn ? this.store.chosen : null };
        if (corner >= 0 && event.button === 0) this.store.set({ corner });
    }

    move(event) {
        const pixel = this.figure.pixelOf(event);
        if (this.pointers.size === 2 && this.pointers.has(event.pointerId)) return this.pinch(event, pixel);
        if (!this.drag) return this.setHover(pixel);
        const { start } = this.drag;
        if (Math.hypot(pixel[0] - start[0], pixel[1] - start[1]) > CLICK) this.drag.isMoved = true;
        if (!this.drag.isMoved) return;
        if (this.drag.corner >= 0) this.onceAFrame(pixel, () => this.dragCorner());
        else if (this.drag.part?.list === "parts") this.onceAFrame(pixel, () => this.dragPart());
        else {
            this.figure.pan(pixel[0] - this.drag.last[0], pixel[1] - this.drag.last[1]);
            this.drag.last = pixel;
        }
    }

    pinch(event, pixel) {
        const other = [...this.pointers].find(([id]) => id !== event.pointerId)[1];
        const before = this.pointers.get(event.pointerId);
        const apart = (a, b) => Math.hypot(a[0] - b[0], a[1] - b[1]) || 1;
        const middle = (a) => [(a[0] + other[0]) / 2, (a[1] + other[1]) / 2];
        const [from, to] = [middle(before), middle(pixel)];
        const factor = apart(pixel, other) / apart(before, other);
        this.pointers.set(event.pointerId, pixel);
        this.figure.isFitted = false;
        this.figure.view = panned(zoomed(this.figure.view, factor, /** @type {any} */ (to)),
                                  to[0] - from[0], to[1] - from[1]);
        this.figure.draw();
    }

    up(event) {
        const { drag } = this;
        const isClick = drag && !drag.isMoved && event.button === 0;
        if (isClick && this.store.state.tool === "draw") this.addAt(drag.start);
        if (isClick && drag.corner < 0 && this.store.state.tool !== "draw") {
            this.store.set(drag.element >= 0 ? { corner: -1, selected: drag.element } : { corner: -1 });
        }
        this.end(event);
    }

    end(event) {
        this.pointers.delete(event.pointerId);
        if (this.drag?.isMoved && (this.drag.corner >= 0 || this.drag.part)) {
            this.figure.isHeld = false;
            this.dragged = (this.dragged ?? 0) + 1;  // the next drag is another step of undo
        }
        this.drag = null;
    }

    setHover(pixel) {
        this.hover = pixel;
        if (this.store.state.tool === "draw") this.draw();
    }

    /** Pointers report more often than there are frames. */
    onceAFrame(pixel, act) {
        this.drag.last = pixel;
        this.figure.isHeld = true;
        if (this.frame) return;
        this.frame = requestAnimationFrame(() => {
            this.frame = 0;
            if (this.drag) act();
        });
    }

    dragCorner() {
        const { corner, last } = this.drag;
        const pointer = toPlane(this.figure.view, last);
        const { point } = snapped(pointer, this.snapPoints(corner), this.figure.view.scale);
        this.setCorner(corner, point, `drag ${this.dragged ?? 0}`);
    }

    /** Moves the chosen part as a whole, onto corners of others that are near. */
    dragPart() {
        const { part, start, last, outlines, element } = this.drag;
        const { scale } = this.figure.view;
        const by = /** @type {Point} */ ([(last[0] - start[0]) / scale, (start[1] - last[1]) / scale]);
        const shift = snappedShift(by, outlines, element, SNAP / scale, gridStep(scale));
        const [x, y] = part.item.move ?? [0, 0];
        const move = [x + shift[0], y + shift[1]].map((length) => Number(length.toPrecision(12)));
        this.store.edit(withItem(this.store.section, part, { ...part.item, move }), `drag ${this.dragged ?? 0}`);
    }

    /** @param {number} corner of the chosen part @param {Point} point in the section */
    setCorner(corner, point, edit = "") {
        const element = this.store.chosen;
        if (!element) return;
        const points = ownPoints(element.item).slice();
        points[corner] = unplaced(element.item, point);
        this.store.edit(withItem(this.store.section, element, withOwnPoints(element.item, points)), edit);
    }

    /** A double click on an edge of the chosen part makes a corner there. */
    insert(event) {
        // What is double-clicked may have been drawn anew since it was pressed.
        const edge = this.pressedEdge ?? -1;
        const element = this.store.chosen;
        if (edge < 0 || !element) return;
        const { item } = element;
        const points = ownPoints(item).slice();
        const { point } = snapped(this.figure.planeOf(event), [], this.figure.view.scale);
        points.splice(edge + 1, 0, unplaced(item, point));
        const radii = (item.radii ?? item.wall?.radii)?.slice();
        radii?.splice(edge + 1, 0, 0);
        const changed = withRadii(withOwnPoints(item, points), radii);
        this.store.edit(withItem(this.store.section, element, changed), "", { corner: edge + 1 });
    }

    /** @param {number} corner of the chosen part */
    removeCorner(corner) {
        const element = this.store.chosen;
        const least = element?.item.wall?.kind === "open" ? 2 : 3;
        if (!element || ownPoints(element.item).length <= least) return;
        const keep = (_, index) => index !== corner;
        const { item } = element;
        const changed = withRadii(withOwnPoints(item, ownPoints(item).filter(keep)),
                                  (item.radii ?? item.wall?.radii)?.filter(keep));
        this.store.edit(withItem(this.store.section, element, changed), "", { corner: -1 });
    }

    // ---- what is being drawn

    addAt(pixel) {
        const { scale } = this.figure.view;
        const { draft } = this.store.state;
        const pointer = toPlane(this.figure.view, pixel);
        const { point, to } = snapped(pointer, this.snapPoints(), scale);
        const [first] = draft?.points ?? [];
        const isFirst = first && to === "corner" && first[0] === point[0] && first[1] === point[1];
        if (isFirst && draft.points.length > 2) this.finish();
        else this.add(point);
    }

    /** @param {Point} point */
    add(point) {
        const draft = this.store.state.draft ?? { points: [] };
        const last = draft.points[draft.points.length - 1];
        if (last && last[0] === point[0] && last[1] === point[1]) return;
        this.store.set({ draft: { ...draft, points: [...draft.points, point] } });
        this.figure.include(point);
    }

    /** @returns {boolean} whether there was a point */
    takeBack() {
        const { draft } = this.store.state;
        if (!draft?.points.length) return false;
        this.store.set({ draft: { ...draft, points: draft.points.slice(0, -1) } });
        return true;
    }

    stop() {
        this.store.set({ tool: "select", draft: null });
    }

    /** Keys while the figure has the focus. */
    key(event) {
        const { tool, corner } = this.store.state;
        if (tool === "draw" && event.key === "Enter") this.finish();
        else if (tool === "draw" && event.key === "Escape") this.stop();
        else if (tool === "draw" && event.key === "Backspace") this.takeBack();
        else if (event.key === "Delete" && corner >= 0) this.removeCorner(corner);
        else return;
        event.preventDefault();
    }

    /** Makes a part of what was drawn. @returns {boolean} whether there were points enough */
    finish() {
        const { draft, drawing } = this.store.state;
        const points = draft?.points ?? [];
        const isWall = drawing.kind.endsWith("wall");
        if (points.length < (drawing.kind === "open wall" ? 2 : 3)) return false;
        const wall = { kind: drawing.kind.split(" ")[0], thickness: drawing.thickness, points };
        const part = isWall ? { wall } : drawing.kind === "hole" ? { kind: "hole", points } : { points };
        const section = withPart(this.store.section, part);
        this.store.edit(section, "", { draft: null, tool: "select", corner: -1,
                                       selected: elementsOf(section).length - 1 });
        return true;
    }

    /** What can be chosen in the figure, what is chosen last, so that it lies on top. */
    drawParts({ outlines, selected, tool }) {
        const elements = [...new Set(outlines.map(({ element }) => element))]
            .sort((one, other) => Number(one === selected) - Number(other === selected));
        fill(this.figure.layers.parts, tool === "draw" ? null : elements.map((element) => svg("path", {
            class: element === selected ? "part chosen" : "part", "fill-rule": "evenodd", "data-element": element,
            d: materialPath(outlines.filter((outline) => outline.element === element)
                .map(({ points }) => ({ outline: points, holes: [] }))) })));
    }

    draw() {
        const { tool, draft } = this.store.state;
        fill(this.figure.layers.board, tool === "draw" ? this.draftNodes(draft?.points ?? []) : this.handleNodes());
    }

    draftNodes(points) {
        const { view } = this.figure;
        const pixels = points.map((point) => toScreen(view, point));
        const nodes = [];
        let target = null;
        if (this.hover) {
            const snap = snapped(toPlane(view, this.hover), this.snapPoints(), view.scale);
            target = toScreen(view, snap.point);
            const text = snap.point.map((x) => Number(x.toPrecision(8))).join(", ");
            nodes.push(svg("circle", { class: `snap ${snap.to}`, cx: target[0], cy: target[1], r: 5 }),
                       svg("text", { class: "coordinates", x: target[0] + 10, y: target[1] - 10 }, text));
        }
        const line = target ? [...pixels, target] : pixels;
        return [svg("polygon", { class: "draft-area", points: line.join(" ") }),
                svg("polyline", { class: "draft", points: line.join(" ") }),
                pixels.map(([x, y]) => svg("circle", { class: "draft-point", cx: x, cy: y, r: 3.5 })), nodes];
    }

    handleNodes() {
        const { view } = this.figure;
        const pixels = this.corners.map((point) => toScreen(view, point));
        if (pixels.length > 500) return [];
        const isOpen = this.store.chosen?.item.wall?.kind === "open";
        const edges = pixels.slice(0, isOpen ? -1 : undefined).map(([x, y], index) => {
            const [x1, y1] = pixels[(index + 1) % pixels.length];
            return svg("line", { class: "edge", x1: x, y1: y, x2: x1, y2: y1, "data-edge": index });
        });
        const { corner } = this.store.state;
        const handles = apart(pixels, corner).map((index) => svg("rect", {
            class: index === corner ? "handle current" : "handle", x: pixels[index][0] - 5,
            y: pixels[index][1] - 5, width: 10, height: 10, "data-corner": index }));
        return [...edges, ...handles];
    }
}

/** Which of a ring's corners have room for a handle; those of a fine arc show when it is near.
 *  @param {Point[]} pixels @param {number} chosen has one anyway */
function apart(pixels, chosen) {
    const shown = [];
    let last = null;
    pixels.forEach(([x, y], index) => {
        const isApart = !last || Math.hypot(x - last[0], y - last[1]) >= LEAST_APART;
        if (isApart || index === chosen) {
            shown.push(index);
            last = [x, y];
        }
    });
    return shown;
}

/** @param {Record<string, any>} part @param {number[]|undefined} radii */
export function withRadii(part, radii) {
    const isRound = radii?.some((radius) => radius > 0);
    if (part.wall) {
        const { radii: _, ...wall } = part.wall;
        return { ...part, wall: isRound ? { ...wall, radii } : wall };
    }
    const { radii: _, ...rest } = part;
    return isRound ? { ...rest, radii } : rest;
}
