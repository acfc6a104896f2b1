// @ts-check
// Search in the catalogue: names as they are typed, families, series.

import { button, el, fill } from "./dom.js";

/** More than these are not listed at once. */
const SHOWN = 60;

/** Letters and digits alone, as the engine compares names. @param {string} text */
export function plainName(text) {
    return text.toLowerCase().replace(/×/g, "x").replace(/,/g, ".").replace(/[^a-z0-9.]/g, "");
}

/** Names that a typed text can mean, those that begin with it first; "HE 200 B" finds HEB200.
 *  @param {string[]} names @param {string} typed */
export function matching(names, typed) {
    const wanted = plainName(typed);
    if (!wanted) return names;
    const turned = /^he(\d+)([abm])$/.exec(wanted);
    const sought = turned ? `he${turned[2]}${turned[1]}` : wanted;
    const plain = names.map((name) => [plainName(name), name]);
    const starts = plain.filter(([name]) => name.startsWith(sought));
    const within = plain.filter(([name]) => !name.startsWith(sought) && name.includes(sought));
    return [...starts, ...within].map(([, name]) => name);
}

export class CataloguePanel {
    /** @param {HTMLElement} container @param {import("./engine_client.js").EngineClient} engine
     *  @param {(name: string, isAdded: boolean) => void} choose */
    constructor(container, engine, choose) {
        this.engine = engine;
        this.choose = choose;
        this.series = "";
        this.names = [];
        this.list = el("ul", { class: "profile-list", id: "profile-list",
                               "aria-label": "Profiles found" });
        this.families = el("div", { class: "chips", role: "group", "aria-label": "Series" });
        this.search = el("input", {
            type: "search", id: "profile-search", placeholder: "IPE 300, HEB, L 100x10 …",
            "aria-label": "Search for a profile", autocomplete: "off", spellcheck: "false",
            "aria-controls": "profile-list",
            on: { input: () => this.show(), keydown: (event) => this.key(event) } });
        container.append(this.search, this.families, this.list);
    }

    async load() {
        const { families } = await this.engine.call({ op: "families" });
        this.series = "";
        const all = families.flatMap((family) => (family.series?.length ? family.series : [family.name]));
        this.chips = [...new Set(all)];
        this.all = (await this.engine.call({ op: "names" })).names;
        this.show();
    }

    async chooseSeries(series) {
        this.series = this.series === series ? "" : series;
        this.ofSeries = this.series
            ? (await this.engine.call({ op: "names", family: this.series })).names : null;
        this.search.value = "";
        this.show();
    }

    async show() {
        if (!this.all) return;
        fill(this.families, this.chips.map((series) => button(series, () => this.chooseSeries(series), {
            class: "chip", "aria-pressed": String(series === this.series) })));
        const typed = this.search.value;
        this.names = matching(this.series && !typed ? this.ofSeries : this.all, typed);
        const isListed = typed.trim() || this.series;
        const shown = isListed ? this.names.slice(0, this.series && !typed ? Infinity : SHOWN) : [];
        const more = isListed ? this.names.length - shown.length : 0;
        fill(this.list, shown.map((name) => this.row(name)),
             more ? el("li", { class: "more" }, `and ${more} more`) : null);
        if (isListed && !this.names.length) await this.suggest(typed);
    }

    row(name) {
        return el("li", {},
            button(name, () => this.choose(name, false), { class: "profile-name", title: `Show ${name} alone` }),
            button("+", () => this.choose(name, true), {
                class: "add-button", title: `Add ${name} to the section`, "aria-label": `Add ${name} to the section` }));
    }

    /** What may be meant where nothing has the typed name. */
    async suggest(typed) {
        const { names } = await this.engine.call({ op: "similar", name: typed });
        if (this.search.value !== typed) return;
        fill(this.list, el("li", { class: "more" }, names.length ? "No profile has this name. Closest:"
                                                                  : "No profile has this name."),
             names.map((name) => this.row(name)));
    }

    key(event) {
        if (event.key === "Enter" && this.names.length && this.search.value.trim()) {
            event.preventDefault();
            this.choose(this.names[0], event.shiftKey);
        } else if (event.key === "ArrowDown") {
            event.preventDefault();
            this.list.querySelector("button")?.focus();
        }
    }
}
