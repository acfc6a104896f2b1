// @ts-check
// Units as they are written, and forces in engineers' units.

import { MILLIMETRES } from "./section_file.js";

const SUPERSCRIPTS = { 2: "²", 3: "³", 4: "⁴", 6: "⁶" };

/** "mm^4" as "mm⁴". @param {string|null|undefined} unit */
export function unitText(unit) {
    return (unit ?? "").replace(/\^(\d)/g, (_, power) => SUPERSCRIPTS[power] ?? `^${power}`);
}

/** What is typed, of which kind, and its sign or place. */
export const FORCES = /** @type {[string, "force"|"moment", string][]} */ ([
    ["N", "force", "tension positive"], ["Mx", "moment", "tension above G positive"],
    ["My", "moment", "tension to the right of G positive"], ["Vx", "force", "through the shear centre"],
    ["Vy", "force", "through the shear centre"], ["T", "moment", "counter-clockwise positive"]]);

/** What forces and moments are typed in, and stresses shown in.
 *  @param {string} unit of the section */
export function forceUnits(unit) {
    return unit === "in" ? { force: "kip", moment: "kip·ft", stress: "ksi" }
                         : { force: "kN", moment: "kNm", stress: "N/mm²" };
}

/** Typed forces in that unit of force whose stresses come out as `forceUnits` says: per square of
 *  the section's unit of length, F = kip in inches, else F = 1 N per mm^2 of that square.
 *  @param {Record<string, number>} typed N, Vx, Vy and Mx, My, T
 *  @param {string} unit of the section */
export function forcesFor(typed, unit) {
    const length = MILLIMETRES[unit];
    const [force, moment] = unit === "in" ? [1, 12] : [1e3 / length ** 2, 1e6 / length ** 3];
    const forces = {};
    for (const [name, value] of Object.entries(typed)) {
        if (value) forces[name] = value * (/^[MT]/.test(name) ? moment : force);
    }
    return forces;
}

/** A number as people read it: seven digits, no rounding noise. @param {number} number */
export function numberText(number) {
    const rounded = Number(number.toPrecision(7)) + 0;
    const magnitude = Math.abs(rounded);
    if (magnitude !== 0 && (magnitude >= 1e9 || magnitude < 1e-4)) return rounded.toExponential();
    return String(rounded).replace("-", "−");
}
