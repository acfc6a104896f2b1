// @ts-check
// What the engine found, in words, numbered as in the figure.

import { button, el, fill } from "./dom.js";
import { unitText } from "./units.js";

/** @param {HTMLElement} container @param {any} result
 *  @param {number} pointedOut @param {(index: number) => void} pointOut */
export function showFindings(container, result, pointedOut, pointOut) {
    const findings = result?.findings ?? [];
    const items = findings.map((finding, index) => ({ finding, index }))
        .filter(({ finding }) => finding.severity !== "hint")
        .map(({ finding, index }) => el("li", { class: finding.severity },
            finding.place
                ? button(String(index + 1), () => pointOut(index), {
                    class: "finding-number", "aria-pressed": String(index === pointedOut),
                    title: "Show in the figure",
                    "aria-label": `${finding.severity} ${index + 1}: show in the figure` })
                : el("span", { class: "finding-number", "aria-hidden": "true" }, String(index + 1)),
            el("p", {}, el("strong", {}, capital(finding.severity)), " ", sentence(finding.problem),
               finding.mend && [" ", el("span", { class: "mend" }, sentence(finding.mend))])));
    const hints = findings.filter((finding) => finding.severity === "hint");
    fill(container,
         items.length ? el("ol", {}, items) : null,
         hints.length
             ? el("details", {}, el("summary", {}, `${hints.length} hint${hints.length > 1 ? "s" : ""}, harmless for the values`),
                  el("ul", {}, hints.slice(0, 100).map((hint) => el("li", {}, sentence(hint.problem)))))
             : null,
         result && result.isComplete && !findings.length && !result.error
             ? el("p", { class: "nothing-found" }, "Nothing doubtful was found.") : null);
}

function capital(text) {
    return text.charAt(0).toUpperCase() + text.slice(1);
}

/** What the engine says, as a sentence with units as they are written. @param {string} text */
export function sentence(text) {
    return text ? unitText(`${capital(text)}${/[.!?]$/.test(text) ? "" : "."}`) : "";
}
