// Chromium with the page in it, from disk and from a server on this machine; whatever the page asks
// of the network and whatever it complains about is kept.

import assert from "node:assert/strict";
import { readFileSync } from "node:fs";
import http from "node:http";
import { createRequire } from "node:module";
import path from "node:path";
import { fileURLToPath, pathToFileURL } from "node:url";

const ROOT = fileURLToPath(new URL("../../..", import.meta.url));

/** The page that is tested; HALVORN_WEB_TOOLS names another folder that its driver is installed in. */
export const PAGE = path.resolve(process.env.HALVORN_PAGE ?? `${ROOT}/build/web/halvorn-sections.html`);
const tools = process.env.HALVORN_WEB_TOOLS;
const require = createRequire(tools ? path.resolve(tools, "package.json") : import.meta.url);
/** A package of the tests. */
export const tool = (name) => require(name);
const { chromium } = tool("playwright-core");

const ARGUMENTS = ["--no-sandbox", "--disable-gpu", "--disable-quic", "--no-first-run",
                   "--disable-background-networking", "--disable-component-update", "--disable-sync"];

export const example = (name) => readFileSync(`${ROOT}/examples/${name}`, "utf8");
export const axeSource = () => readFileSync(require.resolve("axe-core/axe.min.js"), "utf8");

export const launch = () => chromium.launch({
    executablePath: process.env.HALVORN_CHROMIUM ?? "/usr/bin/chromium", args: ARGUMENTS });

/** Serves the page alone. */
export async function serve() {
    const server = http.createServer((request, response) => {
        const isPage = request.url === "/halvorn-sections.html";
        response.writeHead(isPage ? 200 : 404, { "content-type": "text/html; charset=utf-8" });
        response.end(isPage ? readFileSync(PAGE) : "");
    });
    await new Promise((resolve) => server.listen(0, "127.0.0.1", resolve));
    return { url: `http://127.0.0.1:${server.address().port}/halvorn-sections.html`,
             close: () => server.close() };
}

export const fileAddress = pathToFileURL(PAGE).href;

/** The page in a window of its own. */
export class Window {
    static async open(browser, address, options = {}) {
        const context = await browser.newContext({ viewport: { width: 1440, height: 900 }, ...options });
        const window = new Window();
        Object.assign(window, { context, page: await context.newPage(), address, requests: [], complaints: [] });
        window.page.setDefaultTimeout(20_000);
        window.page.on("request", (request) => window.requests.push(request.url()));
        window.page.on("console", (message) => {
            if (["error", "warning"].includes(message.type())) window.complaints.push(message.text());
        });
        window.page.on("pageerror", (error) => window.complaints.push(String(error)));
        await window.page.addInitScript(() => { window.print = () => window.dispatchEvent(new Event("beforeprint")); });
        await window.page.goto(address);
        await window.page.waitForSelector(".chip");
        return window;
    }

    /** Nothing but the page itself was asked for, and nothing went wrong unseen. */
    async close() {
        const outside = this.requests.filter((url) => url !== this.address.replace(/#.*/, "") &&
            url !== this.address && !/^(blob|data):/.test(url));
        await this.context.close();
        assert.deepEqual(outside, [], "requests");
        assert.deepEqual(this.complaints, [], "complaints of the browser");
    }

    async search(name, isAdded = false) {
        await this.page.fill("#profile-search", name);
        await this.page.waitForSelector("#profile-list .profile-name");
        await this.page.press("#profile-search", isAdded ? "Shift+Enter" : "Enter");
    }

    async drop(name, text) {
        const transfer = await this.page.evaluateHandle(([file, content]) => {
            const data = new DataTransfer();
            data.items.add(new File([content], file));
            return data;
        }, [name, text]);
        await this.page.dispatchEvent("body", "drop", { dataTransfer: transfer });
    }

    /** Waits for a value that is there and, where a number is given, is that number.
     *  @returns {Promise<number>} */
    async value(key, expected, tolerance = 1e-6) {
        await this.page.waitForFunction(([name, wanted, part]) => {
            const text = document.querySelector(`#values [data-key="${name}"] .number`)?.textContent;
            const number = Number(text?.replace("−", "-").replace(/·10(-?\d+)$/, "e$1"));
            return text && (wanted === undefined || Math.abs(number - wanted) <= part * Math.abs(wanted));
        }, [key, expected, tolerance]).catch(async (error) => {
            const shown = await this.text(`#values [data-key="${key}"]`).catch(() => "nothing");
            throw new Error(`${key}: ${shown}, not ${expected}; ${error.message}`);
        });
        return Number((await this.text(`#values [data-key="${key}"] .number`)).replace("−", "-"));
    }

    text(selector) {
        return this.page.locator(selector).first().innerText();
    }

    /** Types points on the drawing board. */
    async draw(points, kind = "solid") {
        await this.page.getByRole("button", { name: "Draw", exact: true }).click();
        await this.page.selectOption("#board-bar select[name=kind]", kind);
        const input = this.page.locator(".coordinates-input");
        for (const point of [...points, ""]) {
            await input.fill(point);
            await input.press("Enter");
        }
    }

    async dragCorner(index, right, down, steps = 12) {
        const handle = `[data-corner="${index}"]`;
        await this.page.waitForSelector(handle);
        // At once: a value that arrives draws the handles anew.
        const [x, y] = await this.page.evaluate((selector) => {
            const box = document.querySelector(selector).getBoundingClientRect();
            return [box.x + box.width / 2, box.y + box.height / 2];
        }, handle);
        await this.page.mouse.move(x, y);
        await this.page.mouse.down();
        for (let step = 1; step <= steps; ++step) {
            await this.page.mouse.move(x + (right * step) / steps, y + (down * step) / steps);
            await this.page.evaluate(() => new Promise(requestAnimationFrame));
        }
        await this.page.mouse.up();
    }

    async download(act) {
        const [download] = await Promise.all([this.page.waitForEvent("download"), act()]);
        return { name: download.suggestedFilename(), text: readFileSync(await download.path(), "utf8") };
    }

    save(entry) {
        return this.download(async () => {
            await this.page.click(".menu summary");
            await this.page.getByRole("button", { name: entry }).click();
        });
    }
}
