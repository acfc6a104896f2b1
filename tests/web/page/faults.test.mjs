// What goes wrong in an engineer's hands: the page says so, and passes nothing on that is not so.

import assert from "node:assert/strict";
import { after, before, test } from "node:test";

import { Window, fileAddress, launch } from "./browser.mjs";

let browser;

before(async () => {
    browser = await launch();
});

after(() => browser?.close());

const inWindow = (name, act, options) => test(name, { timeout: 60_000 }, async (context) => {
    const window = await Window.open(browser, fileAddress, options);
    await act(window, context);
    await window.close();
});

const plate = { shape: "plate", width: 100, height: 200 };
const file = (parts, more = {}) => JSON.stringify({ version: 1, unit: "mm", ...more, parts });
/** What the button copies, as another program gets it. */
async function copied({ page }) {
    await page.getByRole("button", { name: "Copy table" }).click();
    await page.waitForFunction(() => /is on the clipboard/.test(document.getElementById("live").textContent));
    await page.evaluate(() => document.body.append(Object.assign(document.createElement("textarea"), { id: "pasted" })));
    await page.focus("#pasted");
    await page.keyboard.press("Control+V");
    return page.inputValue("#pasted");
}

const says = (window, selector, pattern) => window.page.waitForFunction(([of, source]) =>
    new RegExp(source).test(document.querySelector(of)?.textContent ?? ""), [selector, pattern.source])
    .catch(async () => assert.match(await window.page.locator(selector).first().textContent(), pattern));

inWindow("values of an older section never pass for those of one that is refused", async (window) => {
    const { page } = window;
    await window.drop("first.json", file([plate], { name: "First" }));
    await window.value("torsion_constant");
    await page.fill('[name="width"]', "0");
    await page.waitForSelector("#values.stale");
    await says(window, ".stale-note", /Not the values of this section/);
    await says(window, ".figure-caption", /The section before: First/);
    await page.selectOption("#section-unit", "m");
    await says(window, "#values", /20000\s*mm²/);
    await says(window, ".section-figure", /100 mm/);
    await page.getByRole("button", { name: "Close the message" }).click();
    await page.getByRole("button", { name: "Copy table" }).click();
    await page.waitForSelector(".message");
    await page.evaluate(() => window.dispatchEvent(new Event("beforeprint")));
    assert.match(await page.locator("#sheet").textContent(), /First.*cannot be computed: .*width/);
    assert.equal(await page.locator("#sheet table").count(), 0);
    await page.selectOption("#section-unit", "mm");
    await page.fill('[name="width"]', "50");
    await window.value("area", 10000);
    await window.value("torsion_constant");
    assert.equal(await page.locator("#values.stale, .stale-note").count(), 0);
});

inWindow("copies wait for the solution; figures and tables leave with the units that forces are typed in", async (window) => {
    const { page } = window;
    await window.drop("plate.json", file([plate], { unit: "cm" }));
    await page.click("text=Forces and options");
    await page.fill('[name="force-Mx"]', "40");
    await page.selectOption("#figure-bar select", "normal");
    const table = await copied(window);
    const rows = table.trimEnd().split("\n").map((line) => line.split("\t"));
    const row = (name) => rows.find(([first]) => first === name);
    assert.deepEqual([rows[0], rows[1]], [["plate"], ["Property", "Symbol", "Value", "±", "Unit", "Method"]]);
    assert.match(row("Torsion constant")[2], /^[\d.]+(e\+\d+)?$/);
    assert.ok(Number(row("Torsion constant")[3]) > 0);
    assert.ok(rows.some((cells) => cells.length === 1 && /^Plastic/.test(cells[0])), "groups");
    // M / W = 40e6 / (1000 * 2000^2 / 6) = 0.06 N/mm^2 in compression at the bottom.
    assert.equal(Number(row("Largest normal stress")[2]), -0.06);
    assert.equal(row("Largest normal stress")[4], "N/mm²");
    assert.doesNotMatch(table, /--|−/);
    await page.waitForSelector("#engine-figure svg");
    const { text } = await window.save("Figure (SVG)");
    assert.match(text, /Mx = 40 kNm[\s\S]*>40<\/text>\n<text [^>]*>kNm<\/text>[\s\S]*N\/mm²/);
    assert.doesNotMatch(text, /\bF\b/);
    const csv = (await window.save("Values (CSV)")).text.trim().split("\n").map((line) => line.split(","));
    const stress = Number(csv[1][csv[0].indexOf("largest_normal_stress [N/mm2]")]);
    assert.ok(Math.abs(stress + 0.06) < 1e-12, `${stress}`);
});
