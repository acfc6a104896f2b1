// @ts-check
// Files in and out: open, drop, paste, save. Nothing leaves the computer.

import { el, fill } from "./dom.js";
import { choiceField, decidedNumberField, refill } from "./fields.js";
import { UNITS, titleOf, withContoursAsParts } from "./section_file.js";

/** A larger file is not a section [bytes]; the engine refuses it anyway. */
const LARGEST_FILE = 256 * 1024 * 1024;

/** What a text looks like; the name decides where it can. @param {string} name @param {string} text
 *  @returns {"json"|"dxf"|"csv"} */
export function formatOf(name, text) {
    const ending = /\.(json|dxf|csv)$/i.exec(name);
    if (ending) return /** @type {any} */ (ending[1].toLowerCase());
    const start = text.slice(0, 2000);
    if (/^\s*\{/.test(start)) return "json";
    return /^\s*(0|999)\s*\r?\n/.test(start) ? "dxf" : "csv";
}

export class Files {
    /** @param {import("./store.js").Store} store
     *  @param {import("./engine_client.js").EngineClient} engine
     *  @param {(error: any, source?: string) => void} complain */
    constructor(store, engine, complain) {
        this.store = store;
        this.engine = engine;
        this.complain = complain;
    }

    /** @param {File} file */
    async open(file) {
        if (file.size > LARGEST_FILE) {
            this.complain(new Error(`${file.name} is larger than 256 MiB and cannot be a section.`));
            return;
        }
        try {
            const bytes = await file.arrayBuffer();
            const text = new TextDecoder("utf-8", { fatal: true }).decode(bytes);
            await this.read(file.name, text);
        } catch (error) {
            const problem = error instanceof TypeError
                ? new Error(`${file.name} is not text in UTF-8; save it again as such.`) : error;
            this.complain(problem, file.name);
        }
    }

    /** Reads a section and shows it. @param {string} name @param {string} text
     *  @param {{layers?: string[]|null, unit?: string, join?: number|null}} [how] */
    async read(name, text, { layers = null, unit = "", join = null } = {}) {
        const format = formatOf(name, text);
        const section = { text, format, source: name };
        if (layers) section.layers = layers;
        if (unit) section.unit = unit;
        if (join !== null) section.join_tolerance = join;
        try {
            const file = format === "json" ? await this.readFile(section) : await this.convert(section);
            const origin = format === "json" ? null
                : { name, format, text, unit, join, chosen: layers, ...(await this.about(section)) };
            this.store.replace(file, origin);
        } catch (error) {
            await this.refused(section, error);
        }
    }

    /** A section file as it stands, once the engine has read it. */
    async readFile(section) {
        await this.engine.call({ op: "diagnose", section });
        const { $schema, ...file } = JSON.parse(section.text);
        return file;
    }

    /** A drawing or points as a section file whose outlines are parts. */
    async convert(section) {
        const { text } = await this.engine.call({ op: "convert", section });
        const file = withContoursAsParts(JSON.parse(text));
        return { ...file, name: file.name || section.source.replace(/\.\w+$/, "") };
    }

    /** The layers of a drawing, and what the reader left out or took for granted. */
    async about(section) {
        const { findings } = await this.engine.call({ op: "diagnose", section });
        const reading = findings.filter(({ kind }) => kind === "reading");
        if (section.format !== "dxf") return { findings: reading, layers: [], read: [] };
        const { layers, read } = await this.engine.call({ op: "layers", section });
        return { findings: reading, layers, read };
    }

    /** Says what is wrong; a drawing may be read by other layers, or with wider gaps joined. */
    async refused(section, error) {
        this.complain(error, section.source);
        if (section.format !== "dxf") return;
        try {
            const { layers, read } = await this.engine.call({ op: "layers", section });
            const origin = { name: section.source, format: "dxf", text: section.text, findings: [],
                             unit: section.unit ?? "", join: section.join_tolerance ?? null, chosen: section.layers ?? null, layers, read };
            this.store.commit({ ...this.store.work, origin });
        } catch { /* it has been said what is wrong */ }
    }
}

/** The layers of the drawing that is open, to choose among, and the unit that it is read in. */
export class OriginPanel {
    /** @param {HTMLElement} container @param {import("./store.js").Store} store @param {Files} files */
    constructor(container, store, files) {
        store.watch((state, before) => {
            const { origin } = state.history.present;
            if (origin !== before.history?.present.origin) this.show(container, origin, files);
        });
    }

    show(container, origin, files) {
        container.hidden = !origin;
        if (!origin) return fill(container);
        const again = (change) => files.read(origin.name, origin.text,
            { layers: origin.chosen, unit: origin.unit, join: origin.join ?? null, ...change });
        const chosen = new Set(origin.chosen ?? origin.read);
        const choose = (layer, isChosen) => {
            const layers = origin.layers.filter((one) => (one === layer ? isChosen : chosen.has(one)));
            if (layers.length) again({ layers });
        };
        const units = [["", "as it says"], ...UNITS.map((unit) => [unit, unit])];
        refill(container, [
            el("h2", {}, "Read from ", el("span", { class: "file-name" }, origin.name)),
            origin.layers.length > 1 && el("fieldset", { class: "layers" }, el("legend", {}, "Layers"),
                origin.layers.map((layer) => el("label", {}, el("input", {
                    type: "checkbox", name: `layer-${layer}`, checked: chosen.has(layer),
                    on: { change: (event) => choose(layer, event.target.checked) } }), layer))),
            choiceField("Unit of the file", origin.unit, /** @type {any} */ (units),
                        (unit) => again({ unit }), { name: "file-unit" }),
            origin.format === "dxf" && decidedNumberField("Join gaps up to", origin.join, (join) => again({ join }),
                { name: "join", unit: "mm", placeholder: "0.01", hint: "ends of lines that are this near are one corner" }),
            origin.findings.length ? el("ul", { class: "reading" }, origin.findings.map((finding) =>
                el("li", { class: finding.severity }, `${finding.problem}${finding.mend ? `; ${finding.mend}` : ""}`))) : null,
        ]);
    }
}

/** Hands a file to the browser's downloads. @param {string} name @param {string} type
 *  @param {string} text */
export function save(name, type, text) {
    const url = URL.createObjectURL(new Blob([text], { type }));
    el("a", { href: url, download: name }).click();
    setTimeout(() => URL.revokeObjectURL(url), 10_000);
}

/** A file is called as its section is. @param {import("./section_file.js").SectionFile} section
 *  @param {string} ending */
export function fileName(section, ending) {
    const name = titleOf(section).normalize("NFKD").replace(/[\u0300-\u036f]/g, "").replace(/[^\w.-]+/g, "-");
    return `${name.replace(/^[-.]+|[-.]+$/g, "") || "section"}.${ending}`;
}

/** Puts text and HTML on the clipboard. @param {{text: string, html: string}} copied
 *  @returns {boolean} whether the browser let it */
export function copy({ text, html }) {
    const put = (event) => {
        event.clipboardData.setData("text/plain", text);
        if (html) event.clipboardData.setData("text/html", html);
        event.preventDefault();
        event.stopPropagation();
    };
    document.addEventListener("copy", put, { capture: true, once: true });
    const isCopied = document.execCommand("copy");
    document.removeEventListener("copy", put, { capture: true });
    return isCopied;
}

/** Files that are dropped on the page, and sections that are pasted into it.
 *  @param {Files} files @param {HTMLElement} veil @param {(text: string) => void} say */
export function acceptDrops(files, veil, say) {
    let depth = 0;
    const isFile = (event) => [...(event.dataTransfer?.types ?? [])].includes("Files");
    const show = (change) => {
        depth = Math.max(0, depth + change);
        veil.hidden = depth === 0;
    };
    const openOne = async (given) => {
        const [file, ...others] = given;
        if (!file) return;
        await files.open(file);
        if (others.length) say(`One file at a time: ${file.name} was taken, ${others.map(({ name }) => name).join(", ")} left out.`);
    };
    document.addEventListener("dragenter", (event) => isFile(event) && show(1));
    document.addEventListener("dragleave", (event) => isFile(event) && show(-1));
    document.addEventListener("dragover", (event) => isFile(event) && event.preventDefault());
    document.addEventListener("drop", (event) => {
        if (!isFile(event)) return;
        event.preventDefault();
        show(-depth);
        openOne(event.dataTransfer.files);
    });
    document.addEventListener("paste", (event) => {
        const isField = /^(INPUT|TEXTAREA|SELECT)$/.test(/** @type {any} */ (event.target).tagName);
        if (isField) return;
        const given = event.clipboardData?.files ?? [];
        const text = event.clipboardData?.getData("text/plain") ?? "";
        if (given.length) openOne(given);
        else if (text.trim()) files.read("pasted", text);
    });
}
