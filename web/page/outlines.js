// @ts-check
// The outlines of each element where it lies in the section: to be chosen and moved in the figure.

import { compiled, elementsOf, freePart } from "./section_file.js";

/** @typedef {[number, number]} Point */
/** @typedef {{element: number, points: Point[], isHole: boolean}} Outline `element` among
 *  elementsOf */

/** More points than these are not looked at while a part is moved. */
const MOST_POINTS = 3000;

/** The section with a name of its own for each element, `on` following; by these names the engine's
 *  contours tell what they belong to. @param {import("./section_file.js").SectionFile} section */
export function withOwnNames(section) {
    const file = compiled(section);
    const names = new Map();
    let count = 0;
    const renamed = { ...file };
    for (const list of ["contours", "profiles", "parts"]) {
        if (!Array.isArray(file[list])) continue;
        renamed[list] = file[list].map((item) => {
            const name = `#${count++}`;
            const on = item.on === undefined ? {} : { on: renamedTarget(item.on, names) };
            if (list === "parts" && item.name) names.set(item.name, name);
            return { ...item, ...on, name };
        });
    }
    return renamed;
}

/** "web 1" of a row is the first of the row's new name. */
function renamedTarget(on, names) {
    if (names.has(on)) return names.get(on);
    const ofRow = /^(.*) (\d+)$/.exec(on);
    return ofRow && names.has(ofRow[1]) ? `${names.get(ofRow[1])} ${ofRow[2]}` : on;
}

/** @param {import("./engine_client.js").EngineClient} engine
 *  @param {import("./section_file.js").SectionFile} section @returns {Promise<Outline[]>} */
export async function outlinesOf(engine, section) {
    if (elementsOf(section).length < 2) return [];
    const text = JSON.stringify(withOwnNames(section));
    const answer = await engine.call({ op: "convert", section: { text, format: "json", source: "section" } });
    return (JSON.parse(answer.text).contours ?? []).flatMap(({ name, kind, points }) => {
        const own = /^#(\d+)/.exec(name ?? "");
        return own && points ? [{ element: Number(own[1]), points, isHole: kind === "hole" }] : [];
    });
}

/** A part that stands on another, placed by itself where it lies; where nobody knows, at the origin.
 *  @param {import("./section_file.js").SectionFile} section @param {Outline[]} outlines
 *  @param {import("./section_file.js").Part} part */
export function freeWhereItLies(section, outlines, part) {
    const element = elementsOf(section).findIndex(({ item }) => item === part);
    const points = outlines.filter((outline) => outline.element === element).flatMap((outline) => outline.points);
    const free = freePart(part);
    if (!points.length) return free;
    const { count = 1, step = [0, 0] } = part.repeat ?? {};
    // The first of a row is placed, which may be the last from the left.
    const move = [0, 1].map((axis) => points.reduce((least, point) => Math.min(least, point[axis]), Infinity) -
        Math.min(0, (count - 1) * step[axis]));
    return { ...free, at: "bottom_left", move };
}

/** A shift that brings a corner of the moved element onto one of another that is near, else the
 *  shift on the grid. @param {Point} shift @param {Outline[]} outlines @param {number} element
 *  @param {number} reach how near a corner has to be @param {number} step of the grid
 *  @returns {Point} */
export function snappedShift(shift, outlines, element, reach, step) {
    const own = outlines.filter((outline) => outline.element === element).flatMap(({ points }) => points);
    const others = outlines.filter((outline) => outline.element !== element).flatMap(({ points }) => points);
    let best = null;
    let least = reach;
    if (own.length + others.length <= MOST_POINTS) {
        for (const [x, y] of own) {
            for (const [ox, oy] of others) {
                const [dx, dy] = [ox - x - shift[0], oy - y - shift[1]];
                const distance = Math.hypot(dx, dy);
                if (distance < least) [best, least] = [[shift[0] + dx, shift[1] + dy], distance];
            }
        }
    }
    return /** @type {Point} */ (best ?? shift.map((x) => Math.round(x / step) * step));
}
