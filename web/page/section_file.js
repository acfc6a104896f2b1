// @ts-check
// Section files as values (docs/file-format.md): every function returns a new file and leaves the
// one it was given as it is.

import { roundedRing } from "./fillets.js";

/** @typedef {[number, number]} Point x to the right, y up, in the unit of the file */
/** @typedef {Record<string, any>} Part an entry of `parts`; `radii` beside `points` is this page's
 *  own: a fillet per corner, drawn as chords before the engine sees the part */
/** @typedef {{version: number, unit: string, name?: string, parts?: Part[], contours?: Part[],
 *  profiles?: Part[], polyline?: Part, [key: string]: any}} SectionFile */
/** @typedef {{list: "contours"|"profiles"|"parts"|"polyline", index: number, item: Part}} Element */

export const UNITS = ["mm", "cm", "m", "in"];

/** Millimetres in each unit. */
export const MILLIMETRES = { mm: 1, cm: 10, m: 1000, in: 25.4 };

/** How far chords of fillets may be from their arc [mm]; that of the engine's own arcs. */
const CHORD_TOLERANCE = 0.001;

const PLACEMENT_ON = ["on", "side", "touch", "align", "gap"];

/** @param {string} unit @returns {SectionFile} */
export function emptySection(unit = "mm") {
    return { version: 1, unit, parts: [] };
}

/** Everything that a section draws, in the order of its file.
 *  @param {SectionFile} section @returns {Element[]} */
export function elementsOf(section) {
    const elements = [];
    for (const list of /** @type {const} */ (["contours", "profiles", "parts"])) {
        const items = Array.isArray(section[list]) ? section[list] : [];
        items.forEach((item, index) => elements.push({ list, index, item }));
    }
    if (section.polyline) elements.push({ list: "polyline", index: 0, item: section.polyline });
    return elements;
}

/** @param {SectionFile} section */
export function isEmpty(section) {
    return elementsOf(section).length === 0;
}

/** Where messages of the engine say that an element is. @param {Element} element */
export function pointerOf(element) {
    return element.list === "polyline" ? "/polyline" : `/${element.list}/${element.index}`;
}

/** The element that a JSON pointer lies in. @param {SectionFile} section @param {string} pointer */
export function elementAt(section, pointer) {
    return elementsOf(section).find((element) => {
        const own = pointerOf(element);
        return pointer === own || pointer.startsWith(own + "/");
    });
}

/** The name of the catalogue profile that is all of a section as it stands in the catalogue; null
 *  where there is more. Its published values belong beside it.
 *  @param {SectionFile} section */
export function catalogueProfileOf(section) {
    const elements = elementsOf(section);
    if (elements.length !== 1 || elements[0].list !== "parts") return null;
    const part = elements[0].item;
    const more = Object.keys(part).some((key) => key !== "profile" && key !== "name");
    return !more && typeof part.profile === "string" ? part.profile : null;
}

/** What an element is called in lists. @param {Element} element */
export function labelOf(element) {
    const { item, list, index } = element;
    if (item.name) return String(item.name);
    if (item.profile) return String(item.profile);
    if (item.shape) return String(item.shape);
    if (item.wall) return "wall";
    return `${list === "parts" ? "outline" : list.replace(/s$/, "")} ${index + 1}`;
}

/** What a section is called; without a name by what it is made of. @param {SectionFile} section */
export function titleOf(section) {
    return section.name || elementsOf(section).map(labelOf).slice(0, 4).join(" + ") || "Section";
}

/** @param {SectionFile} section @param {Element} element @param {Part} item */
export function withItem(section, element, item) {
    if (element.list === "polyline") return { ...section, polyline: item };
    const items = (section[element.list] ?? []).slice();
    const before = items[element.index];
    items[element.index] = item;
    const changed = { ...section, [element.list]: items };
    if (element.list !== "parts" || !before?.name || !item.name || before.name === item.name) return changed;
    return renamedOn(changed, before.name, item.name);
}

/** Parts that stand on one that has a new name, or on one of its row, follow it. */
function renamedOn(section, from, to) {
    const parts = section.parts.map((part) =>
        (standsOn(section, part, from) ? { ...part, on: to + part.on.slice(from.length) } : part));
    return { ...section, parts };
}

/** Whether a part stands on the one of a name, or on one of its row: "rib 2" of "rib".
 *  @param {SectionFile} section @param {Part} part @param {string|undefined} name */
export function standsOn(section, part, name) {
    if (!name || typeof part.on !== "string") return false;
    const isOfRow = part.on.startsWith(`${name} `) && /^\d+$/.test(part.on.slice(name.length + 1));
    return part.on === name || (isOfRow && !(section.parts ?? []).some((other) => other.name === part.on));
}

/** @param {Part} part as it stands on another @returns {Part} the same, placed by itself */
export function freePart(part) {
    const free = { ...part };
    for (const key of PLACEMENT_ON) delete free[key];
    return free;
}

/** @param {SectionFile} section @param {Part} part */
export function withPart(section, part) {
    return { ...section, parts: [...(section.parts ?? []), part] };
}

/** Takes an element away; what stood on it is placed by itself.
 *  @param {SectionFile} section @param {Element} element
 *  @param {(part: Part) => Part} [free] how that is placed */
export function without(section, element, free = freePart) {
    if (element.list === "polyline") {
        const { polyline, ...rest } = section;
        return rest;
    }
    const items = (section[element.list] ?? []).filter((_, index) => index !== element.index);
    const changed = { ...section, [element.list]: items };
    const { name } = element.item;
    const isNamed = items.some((item) => item.name === name);
    if (element.list !== "parts" || isNamed) return changed;
    return { ...changed, parts: items.map((part) => (standsOn(changed, part, name) ? free(part) : part)) };
}

/** @param {SectionFile} section @param {string} base a name that no part has yet */
export function freeName(section, base) {
    const names = new Set((section.parts ?? []).map((part) => part.name));
    if (!names.has(base)) return base;
    for (let number = 2; ; ++number) {
        if (!names.has(`${base} ${number}`)) return `${base} ${number}`;
    }
}

/** Adds a part on top of the last solid one, which gets a name if it has none: so that what is added
 *  can be seen and hangs together. A hole goes to the corner of the box.
 *  @param {SectionFile} section @param {Part} part */
export function withPartOnTop(section, part) {
    const parts = section.parts ?? [];
    const last = parts.findLastIndex((other) => other.kind !== "hole");
    if (last < 0 || part.kind === "hole") return withPart(section, part);
    let changed = section;
    let on = parts[last].name;
    if (!on || parts.filter((other) => other.name === on).length > 1) {
        const element = { list: /** @type {const} */ ("parts"), index: last, item: parts[last] };
        on = freeName(section, labelOf(element));
        changed = withItem(section, element, { ...parts[last], name: on });
    }
    return withPart(changed, { ...part, on, side: "top" });
}

/** The same section with contours as parts, which can be moved and turned.
 *  @param {SectionFile} section */
export function withContoursAsParts(section) {
    const { contours = [], ...rest } = section;
    const parts = contours.map((contour) => {
        const { kind, name, ...part } = contour;
        const named = name && !/^line \d+$/.test(name) ? { name, ...part } : part;
        return kind === "hole" ? { ...named, kind } : named;
    });
    return { ...rest, parts: [...parts, ...(rest.parts ?? [])] };
}

/** A section file as the engine takes it: fillets drawn, empty lists left out.
 *  @param {SectionFile} section @returns {SectionFile} */
export function compiled(section) {
    const tolerance = CHORD_TOLERANCE / (MILLIMETRES[section.unit] ?? 1);
    const file = { ...section };
    for (const list of ["contours", "profiles", "parts"]) {
        if (!Array.isArray(file[list])) continue;
        if (file[list].length === 0) delete file[list];
        else file[list] = file[list].map((item) => drawn(item, tolerance));
    }
    return file;
}

function drawn(part, tolerance) {
    if (!part || !part.points || !part.radii) return part;
    const { radii, ...rest } = part;
    return { ...rest, points: roundedRing(part.points, radii, tolerance) };
}

/** The text of a section file as it is saved. @param {SectionFile} section */
export function fileText(section) {
    return JSON.stringify(compiled(section), null, 2) + "\n";
}

/** Whether a value from outside, an address for example, is built like a section file: what the page
 *  relies on before the engine has judged the rest. @param {any} value */
export function isSectionFile(value) {
    const isObject = (one) => one !== null && typeof one === "object" && !Array.isArray(one);
    if (!isObject(value) || typeof value.unit !== "string") return false;
    const isList = (list) => list === undefined || (Array.isArray(list) && list.every(isObject));
    const lists = [value.contours, value.profiles, value.parts];
    if (!lists.every(isList) || !(value.polyline === undefined || isObject(value.polyline))) return false;
    return elementsOf(value).every(({ item }) =>
        arePoints(item.points) && (item.wall === undefined || (isObject(item.wall) && arePoints(item.wall.points))) &&
        isNumbers(item.radii) && isNumbers(item.move) && (item.repeat === undefined || isObject(item.repeat)));
}

function isNumbers(value) {
    return value === undefined || (Array.isArray(value) && value.every(Number.isFinite));
}

function arePoints(value) {
    return value === undefined ||
        (Array.isArray(value) && value.every((point) => isNumbers(point) && point?.length === 2));
}
