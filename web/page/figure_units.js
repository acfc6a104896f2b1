// @ts-check
// The engine's figures of stresses, which know forces as F, with the units that forces are typed in.

import { FORCES, forceUnits, numberText } from "./units.js";

const NUMBER = /(<text [^>]*?)( textLength="[^"]*")?>(?:[^<]|<tspan[^>]*>[^<]*<\/tspan>)*<\/text>\n(<text [^>]*?)( textLength="[^"]*")?>F( \w+)?<\/text>/g;
const STRESS = /<text ([^>]*?)(?: textLength="[^"]*")?>((?:[^<]|<tspan[^>]*>[^<]*<\/tspan>)*?)F\/\w+<tspan[^>]*>2<\/tspan><\/text>/g;

/** @param {string} text of the figure as SVG @param {Record<string, number>} forces as typed
 *  @param {string} unit of the section */
export function withForceUnits(text, forces, unit) {
    const units = forceUnits(unit);
    const typed = FORCES.filter(([name]) => forces[name])
        .map(([name, kind]) => ({ name, number: numberText(forces[name]), unit: units[kind] }));
    const told = new Map(typed.map(({ name, number, unit: of }) => [name, `${name} = ${number} ${of}`]));
    let row = 0;
    return text
        .replace(NUMBER, (all, number, _, unitOf) => {
            const force = typed[row++];
            return force ? `${number}>${force.number}</text>\n${unitOf}>${force.unit}</text>` : all;
        })
        .replace(STRESS, (_, properties, before) => `<text ${properties}>${before}${units.stress}</text>`)
        .replace(/<desc>[^<]*<\/desc>/, (description) => description
            .replace(/\b(N|Mx|My|Vx|Vy|T) = [^;<]* F( \w+)?(?=[;<])/g, (all, name) => told.get(name) ?? all)
            .replace(/F\/\w+\^2/g, units.stress));
}
