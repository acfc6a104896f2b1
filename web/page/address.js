// @ts-check
// The hash of the address: it follows the section and restores it.

import { LONGEST_HASH, packed, unpacked } from "./share.js";
import { UNITS, elementsOf, isEmpty, isSectionFile } from "./section_file.js";
import { isChanged } from "./store.js";

/** How long after a change the address follows [ms]; browsers limit how often it may. */
const DELAY = 400;

/** Keeps the address up to date. @param {import("./store.js").Store} store
 *  @param {(error: any) => void} complain */
export function followAddress(store, complain) {
    let timer = 0;
    let own = "";
    const write = async () => {
        const { state, work } = store;
        if (isEmpty(work.section)) return replace("");
        const hash = `s=${await packed(stateOf(state))}`;
        own = hash.length > LONGEST_HASH ? "" : hash;
        replace(own);
    };
    const replace = (hash) => history.replaceState(null, "", hash ? `#${hash}` : location.pathname + location.search);
    store.watch((state, before) => {
        const isOther = isChanged(state, before) || isChanged(state, before, "beside") ||
            ["unit", "forces", "options"].some((key) => state[key] !== before[key]);
        if (!isOther || !before.history) return;
        clearTimeout(timer);
        timer = setTimeout(write, DELAY);
    });
    window.addEventListener("hashchange", () => {
        const hash = location.hash.slice(1);
        if (!hash || hash === own) return;
        if (document.getElementById(hash)) replace(own);  // a place in the page, which has been gone to
        else restore(store, complain);
    });
}

/** What an address carries, under short names. */
function stateOf({ history: { present }, unit, forces, options }) {
    return { f: present.section, b: present.beside ?? undefined, u: unit || undefined,
             l: Object.keys(forces).length ? forces : undefined,
             o: Object.keys(options).length ? options : undefined };
}

/** Takes the section from the address. @param {import("./store.js").Store} store
 *  @param {(error: any) => void} complain @returns {Promise<boolean>} whether it holds one */
export async function restore(store, complain) {
    if (!location.hash) return false;
    try {
        const { f, b, u, l, o } = await unpacked(/^#s=([\w-]+)$/.exec(location.hash)?.[1] ?? "");
        if (!isSectionFile(f) || (b && !isSectionFile(b)) || !isRest(u, l, o)) throw new TypeError("no section");
        const count = elementsOf(f).length;
        store.commit({ section: f, beside: b ?? null, origin: null }, "", {
            unit: u ?? "", forces: l ?? {}, options: o ?? {}, selected: count === 1 ? 0 : -1, corner: -1 });
        return true;
    } catch {
        history.replaceState(null, "", location.pathname + location.search);
        complain(new Error("The address holds no whole section; it may have been cut. Ask for the section file."));
        return false;
    }
}

/** Whether what an address carries beside sections can be shown: a unit of values, numbers by name. */
function isRest(unit, ...numbers) {
    return (unit === undefined || UNITS.includes(unit)) && numbers.every((one) => one === undefined ||
        (typeof one === "object" && one !== null && Object.values(one).every(Number.isFinite)));
}
