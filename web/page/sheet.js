// @ts-check
// The printed sheet: figure, values, findings, and by which version of the engine of which file.

import { el, fill, pictureOf } from "./dom.js";
import { sentence } from "./findings_panel.js";
import { elementsOf, labelOf, titleOf } from "./section_file.js";
import { forceUnits } from "./units.js";
import { showStresses } from "./forces_panel.js";
import { showPartModuli, showTable } from "./values_table.js";

/** @param {HTMLElement} sheet @param {{state: any, section: any, version: any, digest: string,
 *  beside: any}} content */
export function fillSheet(sheet, { state, section, version, digest, beside }) {
    const { result } = state;
    const values = el("div");
    showTable(values, result, beside?.groups ? beside : null,
              ["Value", state.history.present.beside?.name || "Other section"]);
    const moduli = el("div");
    showPartModuli(moduli, result, state.unit, section.unit);
    const stresses = el("div");
    showStresses(stresses, result, section.unit);
    const findings = (result.findings ?? []).filter(({ severity }) => severity !== "hint");
    fill(sheet,
         el("header", {}, el("h1", {}, titleOf(section)),
            el("p", {}, new Date().toISOString().slice(0, 10))),
         el("div", { class: "sheet-figure" }, result.svg && pictureOf(result.svg)),
         el("p", { class: "sheet-parts" }, partsText(section)),
         forcesText(state.forces, section.unit), stresses, values, moduli,
         findings.length ? el("ul", { class: "sheet-findings" }, findings.map((finding) =>
             el("li", {}, el("strong", {}, `${finding.severity}: `), sentence(finding.problem), " ",
                finding.mend ? sentence(finding.mend) : ""))) : null,
         el("footer", {},
            el("p", {}, `HalvornSectionTools ${version.version}, results ${version.results_version}`),
            digest ? el("p", {}, `SHA-256 of the section file: ${digest}`) : null));
}

/** The dimensions that were typed, so that a reader can check them. */
function partsText(section) {
    const texts = elementsOf(section).slice(0, 40).map((element) => {
        const { item } = element;
        const points = item.points ?? item.outline ?? item.wall?.points;
        const own = points ? `${points.length} points`
            : Object.entries(item).filter(([, value]) => typeof value === "number")
                .map(([key, value]) => `${key.replace(/_/g, " ")} ${value}`).join(", ");
        const place = item.on ? `${item.side} of ${item.on}` : item.move ? `at ${item.move.join(", ")}` : "";
        const what = item.name && (item.profile || item.shape);
        return [labelOf(element), what, own, place].filter(Boolean).join(", ");
    });
    return `Lengths in ${section.unit}. ${texts.join("; ")}.`;
}

function forcesText(forces, unit) {
    const units = forceUnits(unit);
    const given = Object.entries(forces).filter(([, value]) => value);
    if (!given.length) return null;
    return el("p", {}, "Forces: ", given.map(([name, value]) =>
        `${name} = ${value} ${/^[MT]/.test(name) ? units.moment : units.force}`).join(", "));
}
