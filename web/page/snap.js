// @ts-check
// Typed and snapped coordinates.

import { turn } from "./place.js";

/** @typedef {[number, number]} Point */

/** How near the pointer has to come to what it snaps to [pixels]. */
const REACH = 9;

/** The smallest distance between points of the grid [pixels]: finer steps than a hand can hold. */
const SPACING = 5;

/** A step of 1, 2 or 5 times a power of ten that stands apart on the screen.
 *  @param {number} scale pixels per unit */
export function gridStep(scale) {
    const least = SPACING / scale;
    const power = 10 ** Math.floor(Math.log10(least));
    return [1, 2, 5, 10].map((factor) => factor * power).find((step) => step >= least * 0.999);
}

/** The point that a pointer means: a corner nearby, or level with one, or the nearest of the grid.
 *  @param {Point} pointer @param {Point[]} corners @param {number} scale pixels per unit
 *  @returns {{point: Point, to: "corner"|"level"|"grid"}} */
export function snapped(pointer, corners, scale) {
    const reach = REACH / scale;
    let nearest = null;
    let least = reach;
    for (const corner of corners) {
        const distance = Math.hypot(corner[0] - pointer[0], corner[1] - pointer[1]);
        if (distance <= least) [nearest, least] = [corner, distance];
    }
    if (nearest) return { point: [nearest[0], nearest[1]], to: "corner" };
    const step = gridStep(scale);
    const point = /** @type {Point} */ (pointer.map((x, axis) => {
        const level = corners.find((corner) => Math.abs(corner[axis] - x) <= reach / 2);
        return level ? level[axis] : onGrid(x, step);
    }));
    const isLevel = point.some((x, axis) => x !== onGrid(pointer[axis], step));
    return { point, to: isLevel ? "level" : "grid" };
}

function onGrid(x, step) {
    // Division by a whole number keeps 0.1 steps free of rounding.
    return step < 1 ? Math.round(x / step) / Math.round(1 / step) : Math.round(x / step) * step;
}

const NUMBER = String.raw`[-+]?(?:\d+\.?\d*|\.\d+)(?:e[-+]?\d+)?`;
const PAIR = new RegExp(`^(@?)\\s*(${NUMBER})\\s*[,;\\s]\\s*(${NUMBER})$`, "i");
const POLAR = new RegExp(`^@?\\s*(${NUMBER})\\s*<\\s*(${NUMBER})$`, "i");

/** Reads "x, y"; "@dx, dy" from the last point; "length < degrees" from the last point. Between
 *  semicolons the decimal mark may be a comma.
 *  @param {string} text @param {Point|null} last @returns {Point|null} null: none of these */
export function typedPoint(text, last) {
    const typed = text.includes(";") ? text.replace(/,/g, ".") : text;
    const from = last ?? [0, 0];
    const pair = PAIR.exec(typed.trim());
    if (pair) {
        const [x, y] = [Number(pair[2]), Number(pair[3])];
        return finite(pair[1] ? [from[0] + x, from[1] + y] : [x, y]);
    }
    const polar = POLAR.exec(typed.trim());
    if (!polar) return null;
    const [cosine, sine] = turn(Number(polar[2]));
    const length = Number(polar[1]);
    return finite([from[0] + length * cosine, from[1] + length * sine]);
}

/** @param {Point} point @returns {Point|null} */
function finite(point) {
    return point.every(Number.isFinite) ? point : null;
}

/** Reads a list of points, one per line. @param {string} text
 *  @returns {{points: Point[], problem: string}} */
export function typedPoints(text) {
    const points = [];
    const lines = text.split("\n").map((line) => line.trim());
    for (const [index, line] of lines.entries()) {
        if (!line) continue;
        const point = typedPoint(line, points[points.length - 1] ?? null);
        if (!point) {
            return { points, problem: `Line ${index + 1}: “${line}” is no point; write x, y.` };
        }
        points.push(point);
    }
    return { points, problem: "" };
}
