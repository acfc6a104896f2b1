// @ts-check
// The form of one part: what it is, by the registry of shapes, and where it goes.

import { button, el } from "./dom.js";
import { choiceField, numberField, numbersField, pointsField, textField } from "./fields.js";
import { elementsOf, freeName, labelOf, standsOn, withItem } from "./section_file.js";
import { ownPoints, withOwnPoints } from "./place.js";

/** @typedef {import("./section_file.js").Part} Part */
/** @typedef {{kind: string, name: string, dimensions: {key: string, name: string, symbol?: string,
 *  required: boolean, power?: number, description?: string, example?: number}[]}} Shape */

const PLACES = [["corner", "lower left corner"], ["bottom_left", "bottom left"],
    ["bottom_centre", "bottom centre"], ["bottom_right", "bottom right"], ["middle_left", "middle left"],
    ["centre", "centre"], ["middle_right", "middle right"], ["top_left", "top left"],
    ["top_centre", "top centre"], ["top_right", "top right"], ["centroid", "centre of gravity"]];
const SIDES = [["top", "top"], ["bottom", "bottom"], ["left", "left side"], ["right", "right side"]];
const ALIGNMENTS = { top: ["left", "centre", "right"], bottom: ["left", "centre", "right"],
                     left: ["bottom", "centre", "top"], right: ["bottom", "centre", "top"] };

/** More than these are not typed. */
const MOST_POINTS = 2000;

/** A part with some keys changed; a value of undefined takes the key away.
 *  @param {Part} part @param {Record<string, any>} change @returns {Part} */
export function changedPart(part, change) {
    const changed = { ...part, ...change };
    for (const key of Object.keys(change)) if (change[key] === undefined) delete changed[key];
    return changed;
}

/** @param {{section: any, element: any, shapes: Shape[], edit: (section: any, name: string) => void, free: (part: Part) => Part, now: () => any}} context `now`: the section; `free`: a part that
 *  stands on another, placed by itself */
export function partForm(context) {
    const { section, element } = context;
    const part = element.item;
    const set = (change, name = Object.keys(change)[0]) => {
        // A second edit can come before the form shows the first.
        const now = context.now();
        const item = elementsOf(now).find(({ list, index }) => list === element.list && index === element.index)?.item;
        if (item) context.edit(withItem(now, element, changedPart(item, change)), `${element.list}/${element.index}/${name}`);
    };
    const own = { ...context, part, set, unit: section.unit };
    if (element.list === "parts") {
        return [contents(own), placement(own), heading("More"), more(own)];
    }
    return [contents(own), element.list === "polyline" ? null : kindField(own)];
}

function heading(text) {
    return el("h3", {}, text);
}

function grid(...fields) {
    return el("div", { class: "fields" }, ...fields);
}

function contents({ part, set, shapes, unit }) {
    if (part.shape) return dimensions(part, set, shapes, unit);
    if (part.profile) {
        return grid(textField("Profile", part.profile, (profile) => profile && set({ profile }),
                              { name: "profile", isWide: true, hint: "a name from the catalogue" }));
    }
    const count = ownPoints(part).length;
    if (count > MOST_POINTS) {
        return el("p", { class: "note" }, `${count} points: too many for a form, not for the engine.`);
    }
    if (part.wall) return wall(part, set, unit);
    if (part.points) {
        return grid(
            pointsField("Points x, y", ownPoints(part), (points) => set(withOwnPoints(part, points), "points"),
                        { name: "points", least: 3, unit }),
            part.thickness === undefined && numbersField("Fillet radii, one per point", part.radii ?? [],
                (radii) => set({ radii: fitted(radii, count) }),
                { name: "radii", unit, hint: "0 leaves a corner sharp; a single one is that of all corners" }));
    }
    return el("p", { class: "note" }, "This element is shown as its file has it.");
}

function dimensions(part, set, shapes, unit) {
    const shape = shapes.find(({ kind }) => kind === part.shape);
    if (!shape) return el("p", { class: "note" }, `The engine knows no shape ${part.shape}.`);
    return grid(shape.dimensions.map((dimension) => numberField(
        dimension.name, part[dimension.key],
        (value) => set({ [dimension.key]: value === null ? undefined : value }),
        { name: dimension.key, unit: dimension.power === 0 ? "" : unit, hint: dimension.description,
          isRequired: dimension.required, placeholder: dimension.required ? "" : "0" })));
}

function wall(part, set, unit) {
    const setWall = (change, name) => set({ wall: changedPart(part.wall, change) }, `wall/${name}`);
    return grid(
        choiceField("Wall", part.wall.kind, [["open", "open"], ["closed", "closed"]],
                    (kind) => setWall({ kind }, "kind"), { name: "wall-kind" }),
        numberField("Thickness", part.wall.thickness, (thickness) => setWall({ thickness }, "thickness"),
                    { name: "thickness", unit, isRequired: true }),
        pointsField("Mid-line x, y", part.wall.points, (points) => setWall({
            points, radii: fitted(part.wall.radii, points.length) }, "points"), { name: "points", least: 2, unit }),
        numbersField("Inner radii, one per point", part.wall.radii ?? [], (radii) => setWall({
            radii: fitted(radii, part.wall.points.length) }, "radii"), { name: "radii", unit }));
}

/** One radius per point, as section files want it; a single one is that of all corners. */
function fitted(radii, count) {
    if (!radii?.some((radius) => radius > 0)) return undefined;
    return Array.from({ length: count }, (_, index) => (radii.length === 1 ? radii[0] : radii[index] ?? 0));
}

function kindField({ part, set }) {
    return grid(choiceField("Material", part.kind ?? "solid", [["solid", "solid"], ["hole", "hole"]],
                            (kind) => set({ kind }), { name: "kind" }));
}

function placement(context) {
    const { section, element, part, set, unit } = context;
    const others = elementsOf(section).filter((other) =>
        other.list === "parts" && other.index < element.index && other.item.kind !== "hole");
    const choices = [["", "free"], ...others.map((other) =>
        [String(other.index), `on ${labelOf(other)}`])];
    const current = part.on
        ? String(others.find((other) => other.item.name === part.on)?.index ?? "") : "";
    if (part.on && !current) choices.push(["kept", `on ${part.on}`]);
    return [
        heading("Place"),
        grid(
            part.kind !== "hole" && choices.length > 1 && choiceField("Standing", current || (part.on ? "kept" : ""),
                /** @type {any} */ (choices), (index) => stand(context, index), { name: "standing", isWide: true }),
            part.on ? onAnother(part, set, unit) : freely(part, set, unit)),
        turning(part, set),
    ];
}

/** Sets a part on another, which gets a name if it has none, or frees it. */
function stand({ section, element, part, edit, free }, index) {
    if (index === "kept") return;
    if (index === "") {
        edit(withItem(section, element, free(part)), "");
        return;
    }
    const other = elementsOf(section).find((one) => one.list === "parts" && one.index === Number(index));
    const isUnique = section.parts.filter((one) => one.name === other.item.name).length === 1;
    const on = other.item.name && isUnique ? other.item.name : freeName(section, labelOf(other));
    const named = withItem(section, other, { ...other.item, name: on });
    const { at, move, ...rest } = part;
    edit(withItem(named, element, { ...rest, on, side: part.side ?? "top" }), "");
}

function onAnother(part, set, unit) {
    const aligned = ALIGNMENTS[part.side] ?? ALIGNMENTS.top;
    return [
        choiceField("At its", part.side, /** @type {any} */ (SIDES),
                    (side) => set({ side, align: undefined }), { name: "side" }),
        choiceField("Aligned", part.align ?? "centre", aligned.map((one) => [one, one]),
                    (align) => set({ align: align === "centre" ? undefined : align }), { name: "align" }),
        choiceField("Touching", part.touch ?? "box", [["box", "boxes"], ["outline", "outlines"]],
                    (touch) => set({ touch: touch === "box" ? undefined : touch }), { name: "touch" }),
        numberField("Gap", part.gap, (gap) => set({ gap: gap || undefined }),
                    { name: "gap", unit, placeholder: "0" }),
        ...moving("Shift", part, set, unit),
    ];
}

function freely(part, set, unit) {
    const preset = part.shape || part.profile ? "corner" : "origin";
    const places = preset === "origin" ? [["origin", "its origin"], ...PLACES] : PLACES;
    return [
        choiceField("Point placed", part.at ?? preset, /** @type {any} */ (places),
                    (at) => set({ at: at === preset ? undefined : at }), { name: "at", isWide: true }),
        ...moving("At", part, set, unit),
    ];
}

function moving(label, part, set, unit) {
    const [x, y] = part.move ?? [0, 0];
    const move = (point) => set({ move: point[0] || point[1] ? point : undefined });
    return [
        numberField(`${label} x`, x || null, (value) => move([value ?? 0, y]), { name: "x", unit, placeholder: "0" }),
        numberField(`${label} y`, y || null, (value) => move([x, value ?? 0]), { name: "y", unit, placeholder: "0" }),
    ];
}

function turning(part, set) {
    const turn = (by) => {
        const rotate = ((((part.rotate ?? 0) + by + 180) % 360) + 360) % 360 - 180;
        set({ rotate: rotate || undefined }, "");
    };
    const mirror = (axis) => set({ mirror: part.mirror === axis ? undefined : axis }, "");
    return [
        grid(numberField("Turned", part.rotate, (rotate) => set({ rotate: rotate || undefined }),
                         { name: "rotate", unit: "°", placeholder: "0", hint: "counter-clockwise" }),
             el("div", { class: "field buttons" },
                button("↺ 90°", () => turn(90), { title: "Turn counter-clockwise", "aria-label": "Turn 90° counter-clockwise" }),
                button("↻ 90°", () => turn(-90), { title: "Turn clockwise", "aria-label": "Turn 90° clockwise" }))),
        el("div", { class: "field buttons" },
           button("⇅ top to bottom", () => mirror("x"), { "aria-pressed": String(part.mirror === "x"), title: "Mirror about x" }),
           button("⇄ left to right", () => mirror("y"), { "aria-pressed": String(part.mirror === "y"), title: "Mirror about y" })),
    ];
}

function more({ section, element, part, set, unit, free }) {
    const { count, step = [0, 0] } = part.repeat ?? {};
    const repeat = (change) => {
        const row = { count: count ?? 2, step, ...change };
        set({ repeat: row.count > 1 ? row : undefined }, "repeat");
    };
    return grid(
        textField("Name", part.name ?? "", (name) => set({ name: name || undefined }),
                  { name: "name", problem: (name) => nameProblem(section, element, name) }),
        choiceField("Material", part.kind ?? "solid", [["solid", "solid"], ["hole", "hole"]],
                    (kind) => set(kind === "hole" ? { ...(part.on ? freeKeys(free(part)) : {}), kind, modular_ratio: undefined }
                                                  : { kind: undefined }, "kind"), { name: "kind" }),
        part.kind !== "hole" && numberField("Modular ratio", part.modular_ratio,
            (ratio) => set({ modular_ratio: ratio ?? undefined }),
            { name: "modular_ratio", placeholder: "1", help: "E of this part over the E that values are for" }),
        numberField("In a row", count, (number) => repeat({ count: Math.round(number ?? 1) }),
                    { name: "count", placeholder: "1", hint: "how many equal parts" }),
        part.repeat && numberField("Step x", step[0], (x) => repeat({ step: [x ?? 0, step[1]] }), { name: "step-x", unit }),
        part.repeat && numberField("Step y", step[1], (y) => repeat({ step: [step[0], y ?? 0] }), { name: "step-y", unit }));
}

/** Holes are placed by themselves. */
function freeKeys({ at, move }) {
    return { on: undefined, side: undefined, touch: undefined, align: undefined, gap: undefined, at, move };
}

/** Parts are told apart by their names where others stand on them. */
function nameProblem(section, element, name) {
    const others = section.parts.filter((_, index) => index !== element.index);
    if (name && others.some((other) => other.name === name)) return `Another part is called ${name}; choose another name.`;
    const isStoodOn = others.some((other) => standsOn(section, other, element.item.name));
    return !name && isStoodOn ? "Other parts stand on this one by its name; give it one." : "";
}
