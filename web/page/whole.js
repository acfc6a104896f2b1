// @ts-check
// The whole section turned by a quarter, turned over or moved: its parts stay what they are.

import { MILLIMETRES } from "./section_file.js";

/** @typedef {import("./section_file.js").SectionFile} SectionFile */
/** @typedef {[number, number]} Point */

/** What can be done, as columns where x and y come to lie. */
const MAPS = {
    left: { x: [0, 1], y: [-1, 0], quarters: 1 },
    right: { x: [0, -1], y: [1, 0], quarters: -1 },
    mirrorX: { x: [1, 0], y: [0, -1], mirror: "x" },
    mirrorY: { x: [-1, 0], y: [0, 1], mirror: "y" },
};

const DIRECTIONS = { top: [0, 1], bottom: [0, -1], left: [-1, 0], right: [1, 0], centre: [0, 0],
    bottom_left: [-1, -1], bottom_centre: [0, -1], bottom_right: [1, -1], middle_left: [-1, 0],
    middle_right: [1, 0], top_left: [-1, 1], top_centre: [0, 1], top_right: [1, 1] };
const SIDES = ["top", "bottom", "left", "right", "centre"];
const PLACES = Object.keys(DIRECTIONS).filter((name) => name === "centre" || name.includes("_"));

/** @param {{x: number[], y: number[]}} map @param {number[]} vector @returns {Point} */
function mapped({ x, y }, [a, b]) {
    return [x[0] * a + y[0] * b + 0, x[1] * a + y[1] * b + 0];
}

/** The name whose direction a name's direction becomes. */
function renamed(map, name, names) {
    const [x, y] = mapped(map, DIRECTIONS[name]);
    return names.find((one) => DIRECTIONS[one][0] === x && DIRECTIONS[one][1] === y);
}

/** Mirrored, then turned, then mapped is again mirrored, then turned. */
function orientation(part, { quarters, mirror }) {
    const before = part.rotate ?? 0;
    if (quarters) return { mirror: part.mirror, rotate: degrees(before + 90 * quarters) };
    if (!part.mirror) return { mirror, rotate: degrees(-before) };
    const half = part.mirror === mirror ? 0 : 180;  // both mirrors are half a turn
    return { mirror: undefined, rotate: degrees(half - before) };
}

/** In (-180, 180]; undefined for 0. */
function degrees(angle) {
    const turned = ((angle % 360) + 360) % 360;
    return (turned > 180 ? turned - 360 : turned) || undefined;
}

function mappedPart(part, map) {
    const changed = { ...part, ...orientation(part, map) };
    if (part.move) changed.move = mapped(map, part.move);
    if (part.repeat?.step) changed.repeat = { ...part.repeat, step: mapped(map, part.repeat.step) };
    if (part.side) changed.side = renamed(map, part.side, SIDES);
    if (part.align) changed.align = renamed(map, part.align, SIDES);
    if (DIRECTIONS[part.at]) changed.at = renamed(map, part.at, PLACES);
    for (const key of Object.keys(changed)) if (changed[key] === undefined) delete changed[key];
    return changed;
}

/** Whether all of a section can be turned and moved: given values of profiles have their own axes.
 *  @param {SectionFile} section */
export function canMove(section) {
    return !section.polyline && !(section.profiles?.length);
}

/** @param {SectionFile} section @param {"left"|"right"|"mirrorX"|"mirrorY"} what `left`: a quarter
 *  counter-clockwise @returns {SectionFile} */
export function turnedWhole(section, what) {
    const map = MAPS[what];
    return changed(section, (part) => mappedPart(part, map), (point) => mapped(map, point));
}

/** @param {SectionFile} section @param {Point} by @returns {SectionFile} */
export function movedWhole(section, [dx, dy]) {
    const clean = (length) => Number(length.toPrecision(12)) + 0;
    const move = ([x, y]) => /** @type {Point} */ ([clean(x + dx), clean(y + dy)]);
    return changed(section, (part) => (part.on ? part : { ...part, move: move(part.move ?? [0, 0]) }), move);
}

function changed(section, ofPart, ofPoint) {
    const whole = { ...section };
    if (section.parts) whole.parts = section.parts.map(ofPart);
    if (section.contours) {
        whole.contours = section.contours.map((contour) =>
            ({ ...contour, points: contour.points.map(ofPoint) }));
    }
    return whole;
}

/** Lengths of parts that are no dimensions of shapes. */
const LENGTHS = ["thickness", "gap"];

/** The same section with its numbers in another unit.
 *  @param {SectionFile} section @param {string} unit
 *  @param {import("./part_form.js").Shape[]} shapes @returns {SectionFile} */
export function inUnit(section, unit, shapes) {
    const factor = MILLIMETRES[section.unit] / MILLIMETRES[unit];
    const scaled = (value) => (Array.isArray(value) ? value.map(scaled) : Number((value * factor).toPrecision(12)));
    const part = (one) => {
        const dimensions = shapes.find(({ kind }) => kind === one.shape)?.dimensions ?? [];
        const lengths = dimensions.filter(({ power }) => power !== 0).map(({ key }) => key);
        const own = { ...one };
        for (const key of new Set([...LENGTHS, ...lengths, "move", "points", "radii"])) {
            if (own[key] !== undefined) own[key] = scaled(own[key]);
        }
        if (own.wall) own.wall = part(own.wall);
        if (own.repeat?.step) own.repeat = { ...own.repeat, step: scaled(own.repeat.step) };
        return own;
    };
    const whole = /** @type {SectionFile} */ ({ ...section, unit });
    for (const list of ["contours", "parts"]) if (section[list]) whole[list] = section[list].map(part);
    if (section.chord_tolerance) whole.chord_tolerance = scaled(section.chord_tolerance);
    return whole;
}
