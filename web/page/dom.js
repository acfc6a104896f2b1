// @ts-check
// Elements of the page. All text goes in as text nodes, never as markup.

const SVG = "http://www.w3.org/2000/svg";

/** @param {string} tag @param {Record<string, any>} [properties] `on` holds listeners; a value of
 *  true is an attribute without a value, false, null and undefined leave it out
 *  @param {...any} children @returns {HTMLElement & Record<string, any>} */
export function el(tag, properties = {}, ...children) {
    return /** @type {any} */ (filled(document.createElement(tag), properties, children));
}

/** The same for SVG. @param {string} tag @param {Record<string, any>} [properties]
 *  @param {...any} children @returns {any} */
export function svg(tag, properties = {}, ...children) {
    return filled(document.createElementNS(SVG, tag), properties, children);
}

function filled(element, properties, children) {
    for (const [name, value] of Object.entries(properties)) {
        if (name === "on") {
            for (const [event, listener] of Object.entries(value)) {
                element.addEventListener(event, listener);
            }
        } else if (value !== undefined && value !== null && value !== false) {
            element.setAttribute(name, value === true ? "" : String(value));
        }
    }
    append(element, children);
    return element;
}

/** @param {Element} element @param {any[]} children nodes, texts, lists of these, or nothing */
export function append(element, children) {
    for (const child of children.flat(Infinity)) {
        if (child !== null && child !== undefined && child !== false && child !== "") {
            element.append(child instanceof Node ? child : String(child));
        }
    }
}

/** @param {Element} element @param {...any} children */
export function fill(element, ...children) {
    element.replaceChildren();
    append(element, children);
}

/** @param {string} id @returns {any} */
export function byId(id) {
    const element = document.getElementById(id);
    if (!element) throw new Error(`the page has no element ${id}`);
    return element;
}

/** @param {string} text @param {() => void} act @param {Record<string, any>} [properties] */
export function button(text, act, properties = {}) {
    return el("button", { type: "button", ...properties, on: { click: act } }, text);
}

/** Numbers of forms are read in either decimal mark. @param {string} text
 *  @returns {number|null} null: no number */
export function numberOf(text) {
    const typed = text.trim().replace(",", ".").replace("−", "-");
    if (!/^[-+]?(\d+\.?\d*|\.\d+)(e[-+]?\d+)?$/i.test(typed)) return null;
    const number = Number(typed);
    return Number.isFinite(number) ? number : null;
}

/** A picture that the engine drew, as a node of this page; null when the text is none.
 *  @param {string} text of an SVG file */
export function pictureOf(text) {
    // The page's policy forbids style attributes, not styles that a script sets.
    const plain = text.replace(/ style="/g, ' data-style="');
    const root = new DOMParser().parseFromString(plain, "image/svg+xml").documentElement;
    if (root.nodeName !== "svg") return null;
    const picture = /** @type {any} */ (document.importNode(root, true));
    for (const element of picture.querySelectorAll("[data-style]")) {
        element.style.cssText = element.dataset.style;
    }
    return picture;
}
