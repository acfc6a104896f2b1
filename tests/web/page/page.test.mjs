// The page as an engineer uses it, in Chromium, from disk and from a server on this machine.

import assert from "node:assert/strict";
import { createHash } from "node:crypto";
import { after, before, describe, test } from "node:test";

import { Window, axeSource, example, fileAddress, launch, serve } from "./browser.mjs";

const ROOT_RADIUS = 15;
const IPE300_AREA = 2 * 150 * 10.7 + (300 - 2 * 10.7) * 7.1 + (4 - Math.PI) * ROOT_RADIUS ** 2;
const TEE = ["0, 0", "@200, 0", "@0, 20", "@-90, 0", "@0, 180", "@-20, 0", "@0, -180", "@-90, 0"];
const TEE_AREA = 200 * 20 + 20 * 180;

let browser;
let server;

before(async () => {
    browser = await launch();
    server = await serve();
});

after(async () => {
    await browser?.close();
    server?.close();
});

const addresses = { "from disk": () => fileAddress, "from a server": () => server.url };

for (const [where, address] of Object.entries(addresses)) {
    describe(where, () => {
        const inWindow = (name, act, options) => test(name, async (context) => {
            const window = await Window.open(browser, address(), options);
            await act(window, context);
            await window.close();
        });

        inWindow("a profile is found and stands beside what is published of it", async (window) => {
            await window.search("ipe 300");
            await window.value("area", IPE300_AREA);
            await window.value("torsion_constant", 197530, 1e-4);
            assert.match(await window.text('[data-key="area"]'), /5381\s+0 %/);
            assert.match(await window.page.locator(".section-figure").textContent(), /150 mm.*300 mm/);
            await window.page.selectOption("#values-unit", "cm");
            await window.value("area", IPE300_AREA / 100);
        });

        inWindow("a drawing is dropped, read by layers, and its fault is marked at its place", async (window) => {
            const { page } = window;
            await window.drop("beam.dxf", example("ipe-300-lines.dxf"));
            await window.value("area", IPE300_AREA);
            assert.equal(await page.isChecked('[name="layer-0"]'), true);
            assert.equal(await page.isChecked('[name="layer-AXES"]'), false);
            assert.match(await window.text(".reading"), /AXES.*left out: 2/);
            await window.drop("bow.csv", "# unit: mm\nx,y\n0,0\n200,300\n200,0\n0,300\n");
            await page.waitForSelector(".findings .error");
            assert.match(await window.text(".findings .error"), /crosses itself at \(100, 150\)/);
            // The mark is half way between the corners of the edge that crosses.
            const off = await page.evaluate(() => {
                const [mark, low, high] = [".mark.error .ring", '[data-corner="0"]', '[data-corner="1"]'].map((one) => {
                    const { x, y, width, height } = document.querySelector(one).getBoundingClientRect();
                    return [x + width / 2, y + height / 2];
                });
                return Math.hypot(mark[0] - (low[0] + high[0]) / 2, mark[1] - (low[1] + high[1]) / 2);
            });
            assert.ok(off < 2, `${off} pixels off`);
            await page.click(".findings .finding-number");
            await page.waitForSelector(".mark.pointed-out");
        });

        inWindow("an outline is drawn, rounded, dragged and undone", async (window) => {
            const { page } = window;
            await window.draw(TEE);
            await window.value("area", TEE_AREA);
            await page.locator('[data-corner="3"]').click();
            await page.fill('[name="corner-radius"]', "15");
            await window.value("area", TEE_AREA + (1 - Math.PI / 4) * 15 ** 2);
            await window.dragCorner(2, 30, 0);
            await page.waitForFunction(() => document.querySelector('textarea[name="points"]').value.split("\n")[2] !== "200, 20");
            const [x] = (await page.inputValue('textarea[name="points"]')).split("\n")[2].split(", ").map(Number);
            assert.ok(x > 200, `dragged to ${x}`);
            // The edge to the corner at (200, 0) leans: a triangle of 20 high is added.
            const dragged = TEE_AREA + (1 - Math.PI / 4) * 15 ** 2 + ((x - 200) * 20) / 2;
            await window.value("area", dragged);
            await page.getByRole("button", { name: "Undo" }).click();
            await window.value("area", TEE_AREA + (1 - Math.PI / 4) * 15 ** 2);
            await page.getByRole("button", { name: "Redo" }).click();
            await window.value("area", dragged);
            await window.draw(["90, 5", "110, 5", "110, 15", "90, 15"], "hole");
            await window.value("area", dragged - 200);
        });

        inWindow("parts are added, turned, set on another and deleted by forms alone", async (window) => {
            const { page } = window;
            await window.search("heb300");
            await window.search("upe 400", true);
            await page.click("text=↻ 90°");
            await page.selectOption('select[name="touch"]', "outline");
            // By hand: areas of 14908 and 9190, the channel's centre at 300 + 13.5 - 29.8.
            await window.value("centroid_y", (14908 * 150 + 9190 * 283.7) / 24098, 2e-4);
            const [ix, iy] = [await window.value("inertia_x"), await window.value("inertia_y")];
            await page.click('[aria-label="Turn the section by 90° counter-clockwise"]');
            await window.value("inertia_x", iy);
            await window.value("inertia_y", ix);
            await page.getByRole("button", { name: "Undo" }).click();
            await page.click('[aria-label="Delete HEB300"]');
            await window.value("width", 400);
            await page.getByRole("button", { name: "Undo" }).click();
            await window.value("height", 313.5);
            await page.click("#tab-shapes");
            await page.getByRole("button", { name: "Plate", exact: true }).click();
            await page.fill('[name="width"]', "120");
            await page.fill('[name="height"]', "11,5");
            await window.value("area", 120 * 11.5);
        });

        inWindow("the address brings the section back, and a cut one says so", async (window, context) => {
            await window.draw(TEE);
            await window.page.fill("#section-name", "Tee – Träger");
            await window.value("torsion_constant");
            await window.page.waitForFunction(() => /^#s=/.test(location.hash));
            await window.page.waitForTimeout(600);
            const table = await window.text("#values");
            const again = await Window.open(browser, await window.page.evaluate(() => location.href));
            await again.value("torsion_constant");
            const first = await again.page.evaluate(() => performance.getEntriesByName("first values")[0].startTime);
            context.diagnostic(`first values ${Math.round(first)} ms after opening`);
            assert.ok(first < 5000);
            assert.equal(await again.text("#values"), table);
            assert.equal(await again.page.inputValue("#section-name"), "Tee – Träger");
            const cut = await Window.open(browser, again.page.url().slice(0, -12));
            assert.match(await cut.text(".message"), /address holds no whole section/);
            await cut.search("ipe300");
            await cut.value("area", IPE300_AREA);
            await again.close();
            await cut.close();
        });

        inWindow("what leaves the page agrees: table, files, and a sheet with version and hash", async (window) => {
            const { page } = window;
            await window.drop("girder.json", example("crane-girder.json"));
            await window.value("torsion_constant");
            const saved = await window.save("Section file (JSON)");
            assert.deepEqual(JSON.parse(saved.text), JSON.parse(example("crane-girder.json")));
            assert.match((await window.save("Figure (SVG)")).text, /^<svg [\s\S]*Crane girder/);
            const csv = (await window.save("Values (CSV)")).text.trim().split("\n");
            const area = Number(csv[1].split(",")[csv[0].split(",").indexOf("area")]);
            await window.value("area", area);
            await page.getByRole("button", { name: "Copy table" }).click();
            await page.click("#profile-search");
            await page.keyboard.press("Control+V");
            assert.match(await page.inputValue("#profile-search"), /Property\s+Symbol\s+Value\s+±\s+Unit\s+Method/);
            await page.getByRole("button", { name: "Print" }).click();
            await page.waitForSelector("#sheet footer", { state: "attached" });
            const sheet = await page.locator("#sheet").evaluate((node) => node.textContent);
            assert.ok(sheet.includes(createHash("sha256").update(saved.text).digest("hex")), "hash of the saved file");
            assert.match(sheet, /HalvornSectionTools \d+\.\d+\.\d+, results \d+/);
            assert.match((await page.pdf({ preferCSSPageSize: true })).toString("latin1"), /^%PDF/);
        });
    });
}

describe("in the page", () => {
    const inWindow = (name, act, options) => test(name, async (context) => {
        const window = await Window.open(browser, fileAddress, options);
        await act(window, context);
        await window.close();
    });

    inWindow("stresses follow from typed forces, with contours and blocks", async (window) => {
        const { page } = window;
        await page.click("#tab-shapes");
        await page.getByRole("button", { name: "Plate", exact: true }).click();
        await page.fill('[name="width"]', "100");
        await page.fill('[name="height"]', "200");
        await page.click("text=Forces and options");
        await page.fill('[name="force-Mx"]', "40");
        // M / W = 40e6 / (100 * 200^2 / 6) = 60 N/mm^2, in tension at the top.
        await page.waitForFunction(() => /normal stress\s*60 N\/mm²/.test(document.getElementById("stresses").innerText));
        await page.selectOption("#figure-bar select", "normal");
        await page.waitForSelector("#engine-figure svg");
        await page.selectOption("#figure-bar select", "x");
        await page.waitForFunction(() => /50/.test(document.querySelector("#engine-figure svg")?.textContent ?? ""));
        // Of parts apart under shear there are none: it is said where they would stand, the values go on.
        await window.drop("apart.json", example("battened-channels.json"));
        await page.fill('[name="force-Vy"]', "50");
        await page.selectOption("#figure-bar select", "shear");
        await page.waitForFunction(() => /no stresses to draw/.test(document.getElementById("engine-figure").innerText));
        await window.value("torsion_constant");
        await page.selectOption("#figure-bar select", "section");
        await page.waitForSelector(".section-figure .elastic");
        assert.equal(await page.locator(".message").count(), 0);
    });

    inWindow("a part is chosen in the figure and moved onto a corner of another", async (window) => {
        const { page } = window;
        const plate = { shape: "plate", width: 200, height: 20 };
        const parts = [plate, { ...plate, name: "cover", move: [31, 47] }];
        await window.drop("plates.json", JSON.stringify({ version: 1, unit: "mm", parts }));
        await window.value("height", 67);
        const cover = await page.locator('[data-element="1"]').boundingBox();
        const scale = cover.width / 200;
        await page.mouse.click(cover.x + cover.width / 2, cover.y + cover.height / 2);
        await page.waitForSelector('[data-element="1"].chosen');
        await page.mouse.move(cover.x + 40, cover.y + 10);
        await page.mouse.down();
        await page.mouse.move(cover.x + 40 - 20 * scale, cover.y + 10 + 10 * scale);
        // Two millimetres off the corner of the other plate.
        await page.mouse.move(cover.x + 40 - 29.5 * scale, cover.y + 10 + 28 * scale);
        await window.value("height", 40);
        await page.mouse.up();
        assert.deepEqual([await page.inputValue("[name=x]"), await page.inputValue("[name=y]")], ["", "20"]);
        await page.getByRole("button", { name: "Undo" }).click();
        await window.value("height", 67);
    });

    inWindow("a composite section shows the moduli of its parts, and why other values are missing", async (window) => {
        await window.drop("composite.json", example("composite-beam.json"));
        // By hand: Ix / (n y) of both outermost fibres of the slab.
        await window.page.waitForFunction(() => /slab\s+0\.14\d+\s+−373\d{6}\s+16832\d{3}/.test(
            document.getElementById("part-moduli").innerText));
        assert.match(await window.text("#values"), /not computed: the section is composite[\s\S]*not computed, as above/);
    });

    inWindow("keys alone find a profile, add a shape, draw, undo and print", async (window) => {
        const { page } = window;
        const press = async (...keys) => {
            for (const key of keys) await page.keyboard.press(key);
        };
        const tabTo = async (name) => {
            for (let step = 0; step < 80; ++step) {
                const label = await page.evaluate(() => {
                    const { activeElement: it } = document;
                    return it.getAttribute("aria-label") || it.labels?.[0]?.innerText || it.innerText;
                });
                if (label === name) return;
                await press("Tab");
            }
            assert.fail(`no way to ${name} by Tab`);
        };
        await tabTo("Search for a profile");
        await page.keyboard.type("heb 300");
        await press("ArrowDown", "Enter");
        await window.value("height", 300);
        await tabTo("Draw");
        await press("Enter");
        await page.waitForFunction(() => document.activeElement.matches(".coordinates-input"));
        for (const point of TEE) {
            await page.keyboard.type(point);
            await press("Enter");
        }
        await press("Enter");
        await page.waitForSelector(".parts-list li >> nth=1");
        await press("Control+z");
        await page.waitForSelector(".parts-list li >> nth=1", { state: "detached" });
        await page.reload();
        await page.waitForSelector(".chip");
        await window.value("height", 300);
        await tabTo("Print");
        await press("Enter");
        await page.waitForSelector("#sheet footer", { state: "attached" });
    });

    inWindow("two sections stand side by side", async (window) => {
        await window.search("hea300");
        await window.page.getByRole("button", { name: "Compare" }).click();
        await window.search("heb300");
        await window.page.waitForSelector('.figure-frame >> nth=1');
        await window.page.waitForFunction(() => /HEA300/.test(document.querySelector("#values thead")?.innerText ?? ""));
        // Published areas: 14908 and 11253.
        assert.match(await window.text('#values [data-key="area"]'), /14907\.78[\s\S]*11252\.78[\s\S]*−24\.5 %/);
        // Another unit of length: both in it, and to one scale.
        const plate = { shape: "plate", width: 0.3, height: 0.8 };
        await window.drop("plate.json", JSON.stringify({ version: 1, unit: "m", parts: [plate] }));
        await window.page.waitForFunction(() => /\b0\.24\b[\s\S]*0\.01125278\b/.test(
            document.querySelector('#values [data-key="area"]')?.innerText ?? ""));
        const heights = await window.page.locator(".figure-frame .material").evaluateAll((paths) =>
            paths.map((path) => path.getBoundingClientRect().height));
        assert.ok(heights[0] > 100 && Math.abs(heights[0] / heights[1] - 800 / 290) < 0.02, `${heights}`);
    });

    inWindow("bad files of all kinds are told, and the page goes on", async (window, context) => {
        const ring = Array.from({ length: 100_000 }, (_, index) => {
            const angle = (2 * Math.PI * index) / 100_000;
            return `${1000 * Math.cos(angle)},${1000 * Math.sin(angle)}`;
        });
        const bad = {
            "cut.json": '{"version": 1, "unit": "mm", "parts": [', "deep.json": "[".repeat(5000),
            "deep-object.json": '{"a":'.repeat(5000) + "1" + "}".repeat(5000), "empty.csv": "",
            "words.csv": "lorem ipsum\ndolor,sit\n", "negative.json": '{"version":1,"unit":"mm","parts":[{"shape":"plate","width":-5,"height":3}]}',
            "binary.dxf": "Binary\u0000\u0001\u0002", "open.dxf": "0\nSECTION\n2\nENTITIES\n0\nLINE\n8\n0\n10\n0\n20\n0\n11\n9\n21\n0\n0\nENDSEC\n0\nEOF\n",
            "huge-numbers.csv": "0,0\n1e400,0\n0,1\n", "<img src=x>.json": "{}",
        };
        await window.search("ipe300");
        for (const [name, text] of Object.entries(bad)) {
            await window.page.evaluate(() => document.querySelector(".message .icon")?.click());
            await window.drop(name, text);
            await window.page.waitForSelector(".message").catch(() => assert.fail(`${name}: no message`));
            context.diagnostic(`${name.slice(0, 20)}: ${(await window.text(".message p")).slice(0, 120)}`);
            assert.match(await window.text(".message p"), /\S{3}/, name);
            await window.value("area", IPE300_AREA);
        }
        await window.drop("circle.csv", ["# unit: mm", ...ring].join("\n"));
        await window.value("area", Math.PI * 1000 ** 2, 1e-6);
        await window.search("ipe300");
        await window.value("torsion_constant");
    });

    inWindow("values keep up while a corner of a hundred is dragged", async (window, context) => {
        const points = Array.from({ length: 100 }, (_, index) => {
            const angle = (2 * Math.PI * index) / 100;
            return [Math.round(300 * Math.cos(angle)), Math.round(300 * Math.sin(angle))];
        });
        await window.drop("ring.json", JSON.stringify({ version: 1, unit: "mm", parts: [{ points }] }));
        await window.value("torsion_constant");
        await window.page.evaluate(() => {
            window.shown = new Set();
            window.frames = 0;
            const look = () => {
                window.frames += 1;
                window.shown.add(document.querySelector('#values [data-key="area"] .number')?.textContent);
                requestAnimationFrame(look);
            };
            look();
        });
        await window.dragCorner(0, 300, -120, 60);
        const { shown, frames } = await window.page.evaluate(() => ({ shown: window.shown.size, frames: window.frames }));
        context.diagnostic(`${shown} values in ${frames} frames`);
        assert.ok(shown >= 20, `${shown} values were shown while the corner moved`);
        await window.page.getByRole("button", { name: "Undo" }).click();
        await window.page.waitForFunction(() => /^300, 0\n/.test(document.querySelector('textarea[name="points"]').value));
    });

    for (const colorScheme of ["light", "dark"]) {
        for (const viewport of [{ width: 1440, height: 900 }, { width: 360, height: 740 }]) {
            inWindow(`anyone can read and use it: ${colorScheme}, ${viewport.width} wide`, async (window) => {
                const { page } = window;
                await page.evaluate(axeSource());
                const check = async (state) => {
                    const { violations } = await page.evaluate(() => window.axe.run(document));
                    const told = violations.map(({ id, nodes }) => `${id}: ${nodes.map(({ html }) => html.slice(0, 160)).slice(0, 3).join(" | ")}`);
                    assert.deepEqual(told, [], state);
                    const wide = await page.evaluate(() => document.documentElement.scrollWidth);
                    assert.ok(wide <= viewport.width, `${state}: ${wide} wide`);
                };
                await check("empty");
                await window.search("upe200");
                await window.value("torsion_constant");
                await check("a profile");
                await window.search("heb300", true);
                await window.value("torsion_constant");
                await page.click("text=Forces and options");
                await check("two parts");
                await window.drop("bow.csv", "0,0\n200,300\n200,0\n0,300\n");
                await page.waitForSelector(".findings .error");
                await window.drop("bad.json", "{");
                await page.waitForSelector(".message");
                await check("faults");
                await page.getByRole("button", { name: "Draw", exact: true }).click();
                await check("drawing");
            }, { colorScheme, viewport });
        }
    }
});
