// @ts-check
// Which piece of the plane a figure shows. Values: every change gives a new one.

/** @typedef {[number, number]} Point */
/** @typedef {{scale: number, x: number, y: number, width: number, height: number}} Viewport
 *  `scale` in pixels per unit; x, y: the point in the middle of the screen */

/** What stays free around a section for dimensions and labels [pixels]. */
const MARGIN = 64;

/** Where nothing is drawn yet the screen shows about this much [L]. */
const EMPTY_SPAN = 400;

/** @param {number[]|null|undefined} box x0, y0, x1, y1 @param {number} width @param {number} height
 *  @returns {Viewport} */
export function fitting(box, width, height) {
    const [x0, y0, x1, y1] = box ?? [0, 0, EMPTY_SPAN, EMPTY_SPAN * 0.6];
    const margin = Math.min(MARGIN, width / 4, height / 6);
    const across = Math.max(width - 2 * margin, 20) / Math.max(x1 - x0, 1e-9);
    const up = Math.max(height - 2 * margin, 20) / Math.max(y1 - y0, 1e-9);
    const scale = Math.min(across, up);
    return { scale, x: (x0 + x1) / 2, y: (y0 + y1) / 2, width, height };
}

/** @param {Viewport} view @param {Point} point @returns {Point} in pixels from the upper left */
export function toScreen(view, [x, y]) {
    return [view.width / 2 + (x - view.x) * view.scale, view.height / 2 - (y - view.y) * view.scale];
}

/** @param {Viewport} view @param {Point} pixel @returns {Point} */
export function toPlane(view, [px, py]) {
    return [view.x + (px - view.width / 2) / view.scale, view.y - (py - view.height / 2) / view.scale];
}

/** Larger or smaller about a point of the screen that stays where it is.
 *  @param {Viewport} view @param {number} factor @param {Point} [pixel] */
export function zoomed(view, factor, pixel = [view.width / 2, view.height / 2]) {
    const [x, y] = toPlane(view, pixel);
    const scale = Math.min(Math.max(view.scale * factor, 1e-9), 1e9);
    const changed = { ...view, scale };
    const [moved, raised] = toPlane(changed, pixel);
    return { ...changed, x: changed.x + x - moved, y: changed.y + y - raised };
}

/** @param {Viewport} view @param {number} right pixels @param {number} down pixels */
export function panned(view, right, down) {
    return { ...view, x: view.x - right / view.scale, y: view.y + down / view.scale };
}
