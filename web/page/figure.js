// @ts-check
// The section to scale, with zoom and pan.

import { axes, dimensionLines, findingMarks, gridLines, lengthsOf,
         materialPath } from "./annotations.js";
import { el, fill, svg } from "./dom.js";
import { fitting, panned, toPlane, toScreen, zoomed } from "./viewport.js";

/** How far an arrow key pans [pixels]. */
const PAN = 40;

export class Figure {
    /** @param {HTMLElement} container @param {(index: number) => void} onFinding a mark was chosen */
    constructor(container, onFinding) {
        this.container = container;
        this.world = svg("path", { class: "material", "fill-rule": "evenodd" });
        this.layers = { grid: svg("g"), material: svg("g", {}, this.world), parts: svg("g"),
                        notes: svg("g"), board: svg("g"), marks: svg("g") };
        this.svg = svg("svg", { class: "section-figure", role: "img" },
                       ...Object.values(this.layers));
        this.caption = el("p", { class: "figure-caption" });
        this.hint = el("p", { class: "figure-hint", hidden: true },
                       "Pick a profile or a shape, draw, or drop a DXF, CSV or JSON file here.");
        this.frame = el("div", { class: "figure-frame", tabindex: "0", role: "group",
                                 "aria-label": "Figure: arrow keys pan, plus and minus zoom, 0 fits" },
                        this.svg, this.caption, this.hint);
        container.append(this.frame);
        this.view = fitting(null, 600, 400);
        this.isFitted = true;  // follows the section as long as nobody zooms or pans
        this.isHeld = false;  // a corner is being dragged: the view stays
        this.shown = { result: null, unit: "mm", finding: -1, span: null };
        /** @type {(() => void)[]} */
        this.listeners = [];
        this.svg.addEventListener("click", (event) => {
            const mark = event.target.closest?.("[data-finding]");
            if (mark) onFinding(Number(mark.getAttribute("data-finding")));
        });
        this.frame.addEventListener("wheel", (event) => this.wheel(event), { passive: false });
        this.frame.addEventListener("keydown", (event) => this.key(event));
        new ResizeObserver(() => this.resize()).observe(this.frame);
    }

    /** @param {any} result @param {string} unit of the section
     *  @param {{finding?: number, span?: number[]|null, isPale?: boolean, caption?: string, isEmpty?: boolean}} [more] `span`: a box that
     *  fits beside another figure of the same scale */
    show(result, unit, { finding = -1, span = null, isPale = false, caption = "",
                         isEmpty = false } = {}) {
        const before = this.shown;
        this.shown = { result, unit, finding, span };
        if (result?.material !== before.result?.material) {
            this.world.setAttribute("d", materialPath(result?.material ?? []));
        }
        this.caption.textContent = caption;
        this.hint.hidden = !isEmpty;
        this.svg.classList.toggle("pale", isPale);
        this.svg.setAttribute("aria-label", this.description());
        const isPointedOut = finding >= 0 && finding !== before.finding;
        if (isPointedOut) this.pointOut(result?.findings?.[finding]?.place);
        if (this.isFitted && !this.isHeld && !isPointedOut) this.fit();
        else this.draw();
    }

    description() {
        const { result, unit } = this.shown;
        if (!result?.box) return "Nothing is drawn yet";
        const [x0, y0, x1, y1] = result.box;
        return `Section, ${Number((x1 - x0).toPrecision(6))} ${unit} wide and ` +
            `${Number((y1 - y0).toPrecision(6))} ${unit} high`;
    }

    /** The box that is shown; that of the material, with room for one beside it of another size. */
    get box() {
        const { result, span } = this.shown;
        if (!result?.box || !span) return result?.box ?? null;
        const [x0, y0, x1, y1] = result.box;
        const [dx, dy] = [Math.max(0, span[0] - (x1 - x0)) / 2, Math.max(0, span[1] - (y1 - y0)) / 2];
        return [x0 - dx, y0 - dy, x1 + dx, y1 + dy];
    }

    resize() {
        const { clientWidth: width, clientHeight: height } = this.frame;
        if (!width || !height) return;
        this.view = { ...this.view, width, height };
        if (this.isFitted) this.fit();
        else this.draw();
    }

    fit() {
        this.isFitted = true;
        this.view = fitting(this.box, this.view.width, this.view.height);
        this.draw();
    }

    /** @param {number} factor @param {[number, number]} [pixel] */
    zoom(factor, pixel) {
        this.isFitted = false;
        this.view = zoomed(this.view, factor, pixel);
        this.draw();
    }

    pan(right, down) {
        this.isFitted = false;
        this.view = panned(this.view, right, down);
        this.draw();
    }

    /** Brings a place into the middle unless it can be seen well. */
    pointOut(place) {
        if (!place) return;
        const [x, y] = toScreen(this.view, place);
        const { width, height } = this.view;
        if (x > 30 && y > 30 && x < width - 30 && y < height - 30) return;
        this.isFitted = false;
        this.view = { ...this.view, x: place[0], y: place[1] };
    }

    /** Zooms out until a point can be seen. */
    include(point) {
        const { width, height } = this.view;
        const isSeen = () => {
            const [x, y] = toScreen(this.view, point);
            return x > 20 && y > 20 && x < width - 20 && y < height - 20;
        };
        for (let step = 0; step < 100 && !isSeen(); ++step) this.zoom(0.8);
    }

    wheel(event) {
        event.preventDefault();
        this.zoom(Math.exp(-event.deltaY * (event.deltaMode ? 0.05 : 0.0015)), this.pixelOf(event));
    }

    key(event) {
        if (event.target !== this.frame || event.ctrlKey || event.metaKey || event.altKey) return;
        const acts = { "+": () => this.zoom(1.25), "=": () => this.zoom(1.25),
                       "-": () => this.zoom(0.8), "0": () => this.fit(),
                       ArrowLeft: () => this.pan(PAN, 0), ArrowRight: () => this.pan(-PAN, 0),
                       ArrowUp: () => this.pan(0, PAN), ArrowDown: () => this.pan(0, -PAN) };
        if (!acts[event.key]) return;
        event.preventDefault();
        acts[event.key]();
    }

    /** @returns {[number, number]} */
    pixelOf(event) {
        const { left, top } = this.svg.getBoundingClientRect();
        return [event.clientX - left, event.clientY - top];
    }

    planeOf(event) {
        return toPlane(this.view, this.pixelOf(event));
    }

    draw() {
        const { view } = this;
        const { result, unit, finding } = this.shown;
        const { width, height, scale } = view;
        const [x, y] = toScreen(view, [0, 0]);
        for (const layer of [this.layers.material, this.layers.parts]) {
            layer.setAttribute("transform", `matrix(${scale} 0 0 ${-scale} ${x} ${y})`);
        }
        this.svg.setAttribute("viewBox", `0 0 ${width} ${height}`);
        fill(this.layers.grid, ...gridLines(view));
        const values = lengthsOf(result, unit);
        fill(this.layers.notes, ...(result?.box ? [
            ...dimensionLines(view, result.box, unit, values), ...axes(view, result.box, values),
        ] : []));
        fill(this.layers.marks, ...findingMarks(view, result?.findings ?? [], finding));
        for (const listener of this.listeners) listener();
    }
}
