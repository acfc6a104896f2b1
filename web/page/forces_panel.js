// @ts-check
// Forces and what else the solution takes, as typed.

import { el, fill } from "./dom.js";
import { numberField, refill } from "./fields.js";
import { FORCES, forceUnits, unitText } from "./units.js";
import { powerNode } from "./values_table.js";

export class ForcesPanel {
    /** @param {HTMLElement} container @param {import("./store.js").Store} store */
    constructor(container, store) {
        this.container = container;
        this.store = store;
        store.watch((state, before) => {
            const unit = state.history.present.section.unit;
            if (unit !== before.history?.present.section.unit || state.forces !== before.forces ||
                state.options !== before.options) this.show(state, unit);
        });
    }

    show({ forces, options }, unit) {
        const units = forceUnits(unit);
        const force = (name) => (value) =>
            this.store.set({ forces: { ...this.store.state.forces, [name]: value ?? 0 } });
        const option = (name) => (value) => {
            const { [name]: _, ...rest } = this.store.state.options;
            this.store.set({ options: value === null ? rest : { ...rest, [name]: value } });
        };
        refill(this.container, [
            el("div", { class: "fields three" }, FORCES.map(([name, kind, hint]) =>
                numberField(name, forces[name] || null, force(name),
                            { name: `force-${name}`, unit: units[kind], help: hint, placeholder: "0" }))),
            el("div", { class: "fields" },
                numberField("Density", options.density, option("density"),
                            { name: "density", unit: "kg/m³", help: "for the mass per metre", range: [(value) => value > 0, "above 0"] }),
                numberField("Poisson’s ratio", options.poisson, option("poisson"),
                            { name: "poisson", placeholder: "0", help: "acts on shear",
                              range: [(value) => value >= 0 && value <= 0.5, "from 0 to 0.5"] }),
                numberField("Tolerance", options.tolerance, option("tolerance"),
                            { name: "tolerance", placeholder: "1e-4", help: "of torsion and shear",
                              range: [(value) => value >= 1e-9 && value <= 0.1, "from 1e-9 to 0.1"] })),
        ]);
    }
}

/** The largest stresses. @param {HTMLElement} container @param {any} result @param {string} unit */
export function showStresses(container, result, unit) {
    const stresses = result?.stresses ?? [];
    if (!stresses.length) return fill(container);
    const [{ why_missing: why }] = stresses;
    if (why && stresses.every((stress) => stress.why_missing === why)) {
        return fill(container, el("p", { class: "stresses" }, `No stresses: ${why}.`));
    }
    fill(container, el("dl", { class: "stresses" }, stresses.map((stress) => el("div", {},
        el("dt", {}, stress.name),
        el("dd", {}, stress.text ? [el("b", {}, powerNode(stress.text)), ` ${forceUnits(unit).stress}`]
                                 : unitText(stress.why_missing),
           stress.place && el("span", { class: "place" },
               ` at (${stress.place.map((x) => Number(x.toPrecision(5))).join(", ")})`))))));
}
