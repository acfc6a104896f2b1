// @ts-check
// Keeps the values of the section up to date: at every change those that take no solution, torsion,
// warping and shear when the hand rests.

import { boxOf } from "./annotations.js";
import { ENDED, EngineClient, Latest, Overtaken } from "./engine_client.js";
import { outlinesOf } from "./outlines.js";
import { catalogueProfileOf, compiled, elementsOf, isEmpty, titleOf } from "./section_file.js";
import { isChanged } from "./store.js";
import { withForceUnits } from "./figure_units.js";
import { forcesFor } from "./units.js";

/** How long the hand rests before the solution starts [ms]. */
const REST = 250;

/** How long a solution that is no longer wanted may run [ms]. */
const PATIENCE = 400;

/** Sections of longer files are drawn when they are asked for alone [characters]. */
const LARGEST_FIGURE = 1_000_000;

/** What the engine is to read: a profile as it stands in the catalogue, for its published values,
 *  or else a section file. @param {import("./section_file.js").SectionFile} section */
export function inputOf(section) {
    const profile = catalogueProfileOf(section);
    if (profile) return { profile, unit: section.unit };
    return { text: JSON.stringify(compiled(section)), format: "json", source: titleOf(section) };
}

/** @param {import("./store.js").State} state
 *  @param {import("./section_file.js").SectionFile} section
 *  @param {boolean} warping with torsion, warping and shear */
export function requestFor(state, section, warping, want) {
    const options = { warping };
    for (const [key, value] of Object.entries(state.options)) {
        if (value !== null && (warping || key === "density")) options[key] = value;
    }
    const forces = forcesFor(state.forces, section.unit);
    const hasForces = warping && Object.keys(forces).length > 0;
    if (hasForces) options.forces = forces;
    if (section.density && options.density === undefined) options.density = section.density;
    const request = { op: "evaluate", section: inputOf(section), options, want };
    if (hasForces) want.push("stresses");
    if (state.unit) request.unit = state.unit;
    return request;
}

export class Evaluation {
    /** @param {import("./store.js").Store} store @param {() => EngineClient} makeEngine */
    constructor(store, makeEngine) {
        this.store = store;
        this.makeEngine = makeEngine;
        this.engine = makeEngine();  // for whatever is quick
        this.quick = new Latest(this.engine);
        this.slow = null;  // the first values come before a second engine is made
        this.timer = 0;
        /** @type {((value?: any) => void)[]} */
        this.waiting = [];
        store.watch((state, before) => this.watch(state, before));
    }

    /** The engine for what takes time. @returns {EngineClient} */
    get solver() {
        if (!this.solving) {
            this.solving = this.makeEngine();
            this.slow = new Latest(this.solving, PATIENCE);
        }
        return this.solving;
    }

    /** Waits until what is shown is computed as it is asked for, or refused. */
    async settled() {
        if (!isSettled(this.store.state)) await new Promise((resolve) => this.waiting.push(resolve));
    }


    watch(state, before) {
        if (isSettled(state)) this.waiting.splice(0).forEach((resolve) => resolve());
        const section = state.history.present.section;
        const isNew = isChanged(state, before);
        const isOther = state.unit !== before.unit || state.options !== before.options;
        if (isNew || isOther) this.values(state, section);
        const isAsked = state.forces !== before.forces || state.figure !== before.figure;
        if (isNew || isOther || isAsked) this.afterRest(isNew ? REST : 0);
        const isOtherUnit = section.unit !== before.history?.present.section.unit;
        if (isChanged(state, before, "beside") || isOther || isOtherUnit) this.beside(state);
    }

    async values(state, section) {
        if (isEmpty(section)) {
            this.store.set({ result: null });
            return;
        }
        try {
            const want = ["values", "findings", "material"];
            const answer = await this.quick.call(requestFor(state, section, false, want));
            this.accept({ ...shown(answer), section, of: section, isComplete: false,
                          isRefused: false, error: null });
            if (section === this.store.section) await this.outlines(section);
        } catch (error) {
            if (!(error instanceof Overtaken)) await this.refuse(section, error);
        }
    }

    accept(result) {
        if (!this.store.state.result) performance.mark("first values");
        if (!isEmpty(this.store.section)) this.store.set({ result });
    }

    /** Where each part lies, to be chosen in the figure. */
    async outlines(section) {
        const outlines = await outlinesOf(this.engine, section).catch(() => []);
        if (section === this.store.section) this.store.set({ outlines, outlined: section });
    }

    /** Shows what is wrong, at its places where there are any, beside the last good figure. */
    async refuse(section, error) {
        let findings = [];
        try {
            findings = (await this.engine.call({ op: "diagnose", section: inputOf(section) })).findings;
        } catch { /* what cannot be read has no findings */ }
        if (section !== this.store.section) return;
        const last = this.store.state.result;
        this.store.set({ result: { ...last, section, findings, error, isComplete: true, isRefused: true } });
    }

    afterRest(rest) {
        clearTimeout(this.timer);
        this.timer = setTimeout(() => this.solve(), rest);
    }

    /** @param {any} [problem] why there is no figure: the rest is computed without it */
    async solve(problem = null) {
        const { state, section } = this.store;
        const { result } = this.store.state;
        if (isEmpty(section) || (result?.isRefused && result.section === section)) return;
        this.solver;
        const want = ["values", "findings", "methods"];
        const request = requestFor(state, section, true, want);
        if (isComposite(section)) want.push("json");
        if (!problem) Object.assign(request, figureOf(state.figure, request));
        if (request.figure || (!problem && isDrawable(request))) want.push("svg");
        try {
            const answer = await this.slow.call(request);
            const { state: now } = this.store;
            if (section !== this.store.section || now.unit !== state.unit) return;
            const { material, box } = now.result ?? {};
            this.store.set({
                result: { material, box, ...shown(answer), svg: pictureText(answer.svg, state), section, of: section,
                          isComplete: true, isRefused: false, error: null,
                          asked: askedOf(state), figure: state.figure, figureProblem: problem },
            });
        } catch (error) {
            if (error instanceof Overtaken || section !== this.store.section) return;
            if (want.includes("svg")) await this.solve(error);
            else this.store.set({ result: { ...this.store.state.result, error, isComplete: true } });
        }
    }

    async beside(state) {
        const { beside } = state.history.present;
        if (!beside) {
            this.store.set({ besideResult: null });
            return;
        }
        const unit = state.unit || state.history.present.section.unit;
        try {
            const want = ["values", "findings", "material"];
            const request = { ...requestFor({ ...state, forces: {} }, beside, true, want), unit };
            const answer = await this.solver.call(request);
            if (this.store.work.beside === beside) this.store.set({ besideResult: { ...shown(answer), of: beside, unit } });
        } catch (error) {
            if (this.store.work.beside !== beside) return;
            if (error.message === ENDED) await this.beside(state);  // with what was overtaken beside it
            else this.store.set({ besideResult: { error, of: beside, unit } });
        }
    }
}

/** A figure of the engine with the forces as they are typed. @param {string|undefined} text
 *  @param {import("./store.js").State} state */
export function pictureText(text, { forces, history }) {
    return text && withForceUnits(text, forces, history.present.section.unit);
}

/** What the solution depends on beside the section. */
function askedOf({ unit, options, forces, figure }) {
    return { unit, options, forces, figure };
}

/** Whether the result is that of all that is asked for. @param {import("./store.js").State} state */
export function isSettled(state) {
    const { result, history: { present: { section } } } = state;
    if (isEmpty(section)) return true;
    if (result?.section !== section || !result.isComplete) return false;
    const { beside } = state.history.present;
    const isCompared = state.besideResult?.of === beside && state.besideResult.unit === (state.unit || section.unit);
    if (beside && !isCompared) return false;
    return Boolean(result.error) ||
        Object.entries(askedOf(state)).every(([key, value]) => result.asked?.[key] === value);
}

/** The section whose values are shown where they are not those of the section that is refused; null:
 *  they are its own. @param {import("./store.js").State} state */
export function staleSection({ result, history: { present } }) {
    return result?.error && result.groups && result.of !== present.section ? result.of : null;
}

/** An answer as the page shows it; of a composite section with the moduli of its parts. */
function shown({ values, json, ...answer }) {
    // The engine's own box counts holes beside the material.
    const drawn = answer.material ? { box: boxOf(answer.material) } : {};
    return { ...answer, ...drawn, groups: values.groups, parts: json ? JSON.parse(json).parts : [] };
}

function isComposite(section) {
    return elementsOf(section).some(({ item }) => (item.modular_ratio ?? 1) !== 1);
}

/** Whether the engine's figure, which the printed sheet shows, is no matter of seconds. */
function isDrawable(request) {
    return (request.section.text ?? "").length < LARGEST_FIGURE;
}

/** What of the engine's figure is asked for. */
export function figureOf(figure, request) {
    const isBlocks = figure === "x" || figure === "y";
    if (figure === "section" || (!isBlocks && !request.options.forces)) return {};
    return { figure: isBlocks ? { blocks: figure } : { stress: figure } };
}
