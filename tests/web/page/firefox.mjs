// Firefox as Debian has it, over WebDriver BiDi, which Playwright speaks with a Firefox of its own
// only: https://www.w3.org/TR/webdriver-bidi/

import { spawn, spawnSync } from "node:child_process";
import { mkdtempSync, rmSync } from "node:fs";
import { tmpdir } from "node:os";
import path from "node:path";

import { tool } from "./browser.mjs";

const { WebSocket } = tool("ws");
const FIREFOX = process.env.HALVORN_FIREFOX ?? "firefox-esr";
/** The longest that anything may take [ms]. */
const PATIENCE = 30_000;

export const hasFirefox = () => spawnSync(FIREFOX, ["--version"]).status === 0;

/** One window of a Firefox of its own; what it asks for and complains about is kept. */
export class Firefox {
    requests = [];
    complaints = [];
    #answers = new Map();
    #count = 0;

    static async open(address) {
        const firefox = new Firefox();
        firefox.profile = mkdtempSync(path.join(tmpdir(), "firefox-"));
        firefox.process = spawn(FIREFOX, ["--headless", "--no-remote", "--profile", firefox.profile,
                                          "--remote-debugging-port", "0"], { env: { ...process.env, HOME: firefox.profile } });
        const port = await within("Firefox listens", new Promise((resolve) => {
            firefox.process.stderr.on("data", (text) => {
                const found = /WebDriver BiDi listening on ws:\/\/127.0.0.1:(\d+)/.exec(text);
                if (found) resolve(found[1]);
            });
        }));
        firefox.socket = new WebSocket(`ws://127.0.0.1:${port}/session`);
        await within("Firefox answers", new Promise((resolve) => firefox.socket.on("open", resolve)));
        firefox.socket.on("message", (text) => firefox.#take(JSON.parse(text)));
        await firefox.#ask("session.new", { capabilities: {} });
        await firefox.#ask("session.subscribe", { events: ["log.entryAdded", "network.beforeRequestSent"] });
        firefox.context = (await firefox.#ask("browsingContext.getTree", {})).contexts[0].context;
        await firefox.go(address);
        return firefox;
    }

    go(address) {
        return this.#ask("browsingContext.navigate", { context: this.context, url: address, wait: "complete" });
    }

    /** The value of an expression in the page, of a promise when it is fulfilled. */
    async evaluate(expression) {
        const { result, exceptionDetails } = await this.#ask("script.evaluate", {
            expression, target: { context: this.context }, awaitPromise: true });
        if (exceptionDetails) throw new Error(exceptionDetails.text);
        return result.value;
    }

    /** Waits for an expression that is neither null nor false, and returns it. */
    async waitFor(expression) {
        for (const end = Date.now() + PATIENCE; Date.now() < end;) {
            const found = await this.evaluate(expression);
            if (found) return found;
            await new Promise((resolve) => setTimeout(resolve, 50));
        }
        throw new Error(`never there: ${expression}`);
    }

    /** Types into an element as a hand does. */
    async type(selector, text) {
        await this.evaluate(`document.querySelector('${selector}').focus()`);
        await this.#ask("input.performActions", { context: this.context, actions: [{
            type: "key", id: "keyboard", actions: [...text].flatMap((value) =>
                [{ type: "keyDown", value }, { type: "keyUp", value }]) }] });
    }

    async close() {
        this.socket?.close();
        const ended = new Promise((resolve) => this.process.on("exit", resolve));
        this.process.kill("SIGKILL");
        await ended;
        rmSync(this.profile, { recursive: true, force: true, maxRetries: 5 });
    }

    #ask(method, params) {
        const id = ++this.#count;
        const answer = new Promise((resolve, reject) => this.#answers.set(id, { resolve, reject }));
        this.socket.send(JSON.stringify({ id, method, params }));
        return within(method, answer);
    }

    #take({ id, type, method, params, result, message }) {
        if (method === "log.entryAdded" && ["error", "warn"].includes(params.level)) this.complaints.push(params.text);
        if (method === "network.beforeRequestSent") this.requests.push(params.request.url);
        if (!this.#answers.has(id)) return;
        if (type === "error") this.#answers.get(id).reject(new Error(message));
        else this.#answers.get(id).resolve(result);
        this.#answers.delete(id);
    }
}

/** A promise that does not wait for ever. */
async function within(what, promise) {
    let timer;
    const late = new Promise((_, reject) => {
        timer = setTimeout(() => reject(new Error(`${what}: not within ${PATIENCE} ms`)), PATIENCE);
    });
    try {
        return await Promise.race([promise, late]);
    } finally {
        clearTimeout(timer);
    }
}
