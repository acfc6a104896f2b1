// @ts-check
// What stands about the material in a figure: axes, centres, dimensions, findings.

import { svg } from "./dom.js";
import { MILLIMETRES } from "./section_file.js";
import { gridStep } from "./snap.js";
import { toPlane, toScreen } from "./viewport.js";
import { numberText } from "./units.js";

/** @typedef {import("./viewport.js").Viewport} Viewport */

/** Labels this far apart do not touch [pixels]. */
const LINE = 14;

/** Lines this near to each other are shown as one [pixels]. */
const SAME = 1.5;

/** No screen has room for more lines of the grid one way. */
const MOST_LINES = 500;

/** Where the number of a finding stands from its place, which may be a corner to drag [pixels]. */
const BADGE = [-16, -18];

/** Lengths and angles of a result by key, lengths in the unit of the section.
 *  @param {any} result @param {string} unit of the section */
export function lengthsOf(result, unit) {
    const lengths = {};
    for (const group of result?.groups ?? []) {
        for (const value of group.values) {
            if (value.number === null || value.number === undefined) continue;
            const factor = (MILLIMETRES[value.unit] ?? 1) / MILLIMETRES[unit];
            lengths[value.key] = MILLIMETRES[value.unit] ? value.number * factor : value.number;
        }
    }
    return lengths;
}

/** The multiples of a step from one number to another. They are counted: far from 0 a step can be
 *  smaller than what numbers tell apart, and adding it leads nowhere. */
function stepsWithin(low, high, step) {
    const first = Math.ceil(low / step);
    const count = Math.min(Math.floor(high / step) - first + 1, MOST_LINES);
    return Array.from({ length: count > 0 ? count : 0 }, (_, index) => (first + index) * step);
}

/** @param {Viewport} view */
export function gridLines(view) {
    const step = gridStep(view.scale) * 10;
    const [x0, y1] = toPlane(view, [0, 0]);
    const [x1, y0] = toPlane(view, [view.width, view.height]);
    const across = stepsWithin(x0, x1, step)
        .map((x) => `M${toScreen(view, [x, 0])[0].toFixed(1)} 0V${view.height}`);
    const up = stepsWithin(y0, y1, step)
        .map((y) => `M0 ${toScreen(view, [0, y])[1].toFixed(1)}H${view.width}`);
    const d = across.join("") + up.join("");
    const [ox, oy] = toScreen(view, [0, 0]).map((pixel) => pixel.toFixed(1));
    return [svg("path", { class: "grid", d }),
            svg("path", { class: "origin", d: `M${ox} 0V${view.height}M0 ${oy}H${view.width}` })];
}

/** Overall width and height, outside of the shear centre where that lies beside the section.
 *  @param {Viewport} view @param {number[]} box @param {string} unit
 *  @param {Record<string, number>} values */
export function dimensionLines(view, box, unit, values) {
    const [left, bottom] = toScreen(view, [box[0], box[1]]);
    const [right, top] = toScreen(view, [box[2], box[3]]);
    const [mx, my] = toScreen(view, [values.shear_centre_x ?? box[0], values.shear_centre_y ?? box[1]]);
    const isBeside = mx < left - 8 && mx > left - 70 && my > top - 20 && my < bottom + 20;
    const isBelow = my > bottom + 8 && my < bottom + 60 && mx > left - 20 && mx < right + 20;
    const [below, beside] = [(isBelow ? my : bottom) + 30, (isBeside ? mx : left) - 30];
    const d = `M${left} ${below - 6}v12M${right} ${below - 6}v12M${left} ${below}H${right}` +
        `M${beside - 6} ${top}h12M${beside - 6} ${bottom}h12M${beside} ${top}V${bottom}`;
    const middle = (top + bottom) / 2;
    return [
        svg("path", { class: "dimension", d }),
        label((left + right) / 2, below + 15, `${numberText(box[2] - box[0])} ${unit}`, "middle"),
        label(beside - 8, middle, `${numberText(box[3] - box[1])} ${unit}`, "middle",
              { transform: `rotate(-90 ${beside - 8} ${middle})` }),
    ];
}

function label(x, y, text, anchor = "start", more = {}) {
    return svg("text", { class: "label", x, y, "text-anchor": anchor, ...more }, text);
}

/** Elastic and plastic neutral axes, principal axes where they are turned, G and M.
 *  @param {Viewport} view @param {number[]} box @param {Record<string, number>} values */
export function axes(view, box, values) {
    if (values.centroid_x === undefined || values.centroid_y === undefined) return [];
    const [gx, gy] = toScreen(view, [values.centroid_x, values.centroid_y]);
    const [left, bottom] = toScreen(view, [box[0], box[1]]);
    const [right, top] = toScreen(view, [box[2], box[3]]);
    const nodes = [
        svg("path", { class: "elastic",
                      d: `M${left - 16} ${gy}H${right + 26}M${gx} ${bottom + 16}V${top - 26}` }),
        label(right + 30, gy + 4, "x"), label(gx, top - 31, "y", "middle"),
    ];
    nodes.push(...plasticAxes(view, values, { left, right, top, bottom, gx, gy }));
    const angle = values.principal_angle ?? 0;
    if (Math.abs(angle) > 0.01 && Math.abs(Math.abs(angle) - 90) > 0.01) {
        const reach = Math.hypot(right - left, bottom - top) / 2 + 18;
        nodes.push(...principalAxes(gx, gy, angle, reach));
    }
    nodes.push(svg("circle", { class: "centroid-ground", cx: gx, cy: gy, r: 5 }),
               svg("path", { class: "centroid", 
                             d: `M${gx} ${gy}h5a5 5 0 0 1 -5 5zM${gx} ${gy}h-5a5 5 0 0 1 5 -5z` }),
               label(gx + 8, gy - 8, "G"));
    return [...nodes, ...shearCentre(view, values, gx, gy)];
}

function shearCentre(view, values, gx, gy) {
    if (values.shear_centre_x === undefined || values.shear_centre_y === undefined) return [];
    const [mx, my] = toScreen(view, [values.shear_centre_x, values.shear_centre_y]);
    const isApart = Math.hypot(mx - gx, my - gy) > 16;
    return [svg("path", { class: "shear-centre", d: `M${mx - 5} ${my}h10M${mx} ${my - 5}v10` }),
            label(isApart ? mx + 8 : gx + 8, isApart ? my - 8 : gy + 17, "M")];
}

function plasticAxes(view, values, { left, right, top, bottom, gx, gy }) {
    const nodes = [];
    const at = (key) => values[key];
    if (at("plastic_axis_y") !== undefined) {
        const y = toScreen(view, [0, at("plastic_axis_y")])[1];
        if (Math.abs(y - gy) > SAME) {
            const apart = y < gy ? Math.min(y, gy - LINE) : Math.max(y, gy + LINE);  // from the label x
            nodes.push(svg("path", { class: "plastic", d: `M${left - 16} ${y}H${right + 26}` }),
                       label(right + 30, apart + 4, "PNA"));
        }
    }
    if (at("plastic_axis_x") !== undefined) {
        const x = toScreen(view, [at("plastic_axis_x"), 0])[0];
        if (Math.abs(x - gx) > SAME) {
            nodes.push(svg("path", { class: "plastic", d: `M${x} ${bottom + 16}V${top - 14}` }));
        }
    }
    return nodes;
}

function principalAxes(gx, gy, degrees, reach) {
    const angle = (degrees * Math.PI) / 180;
    const [c, s] = [Math.cos(angle) * reach, Math.sin(angle) * reach];
    return [
        svg("path", { class: "principal",
                      d: `M${gx - c} ${gy + s}L${gx + c} ${gy - s}M${gx - s} ${gy - c}L${gx + s} ${gy + c}` }),
        label(gx + c + 4, gy - s, "1"), label(gx - s - 4, gy - c, "2", "end"),
    ];
}

/** @param {Viewport} view @param {any[]} findings @param {number} pointedOut index of one */
export function findingMarks(view, findings, pointedOut) {
    return findings.map((finding, index) => {
        if (!finding.place || finding.severity === "hint") return null;
        const [x, y] = toScreen(view, finding.place);
        const state = index === pointedOut ? " pointed-out" : "";
        return svg("g", { class: `mark ${finding.severity}${state}`,
                          transform: `translate(${x} ${y})`, "data-finding": index },
                   svg("circle", { class: "ring", r: index === pointedOut ? 15 : 4 }),
                   svg("circle", { class: "badge", cx: BADGE[0], cy: BADGE[1], r: 9 }),
                   svg("text", { x: BADGE[0], y: BADGE[1] + 4, "text-anchor": "middle" }, String(index + 1)));
    });
}

/** Left, bottom, right, top of the material; null: there is none. @param {any[]|undefined} material */
export function boxOf(material) {
    let box = null;
    for (const { outline } of material ?? []) {
        for (const [x, y] of outline) {
            if (!box) box = [x, y, x, y];
            else {
                box[0] = Math.min(box[0], x);
                box[1] = Math.min(box[1], y);
                box[2] = Math.max(box[2], x);
                box[3] = Math.max(box[3], y);
            }
        }
    }
    return box;
}

/** @param {any[]} material polygons with holes, in the section's coordinates */
export function materialPath(material) {
    const ring = (points) =>
        points.length ? `M${points.map(([x, y]) => `${x} ${y}`).join("L")}Z` : "";
    return material.map(({ outline, holes }) => ring(outline) + holes.map(ring).join("")).join("");
}
