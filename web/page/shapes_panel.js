// @ts-check
// Shapes by their dimensions, straight from the engine's registry.

import { button, el, fill } from "./dom.js";
import { MILLIMETRES } from "./section_file.js";

/** A shape with the dimensions of its example. @param {import("./part_form.js").Shape} shape
 *  @param {string} unit of the section @returns {import("./section_file.js").Part} */
export function exampleOf(shape, unit) {
    const part = { shape: shape.kind };
    for (const { key, required, example, power } of shape.dimensions) {
        if (!required || example === undefined) continue;
        const factor = power === 0 ? 1 : MILLIMETRES[unit];
        part[key] = Number((example / factor).toPrecision(6));
    }
    return part;
}

/** @param {HTMLElement} container @param {import("./part_form.js").Shape[]} shapes
 *  @param {(shape: import("./part_form.js").Shape, isAdded: boolean) => void} choose */
export function showShapes(container, shapes, choose) {
    fill(container, el("ul", { class: "profile-list shapes" }, shapes.map((shape) => el("li", {},
        button(shape.name, () => choose(shape, false), { class: "profile-name", title: `Show ${shape.name} alone` }),
        button("+", () => choose(shape, true), { class: "add-button", title: `Add ${shape.name} to the section`,
                                                 "aria-label": `Add ${shape.name} to the section` })))));
}
