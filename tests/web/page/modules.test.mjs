// What the page's modules promise without a browser: against closed forms and inverses.

import assert from "node:assert/strict";
import { readFileSync, readdirSync } from "node:fs";
import { test } from "node:test";
import { fileURLToPath } from "node:url";

import { matching } from "../../../web/page/catalogue_panel.js";
import { EngineClient, Latest, Overtaken } from "../../../web/page/engine_client.js";
import { isSettled } from "../../../web/page/evaluation.js";
import { roundedRing } from "../../../web/page/fillets.js";
import { edited, historyOf, redone, undone } from "../../../web/page/history.js";
import { snappedShift, withOwnNames } from "../../../web/page/outlines.js";
import { placed, unplaced } from "../../../web/page/place.js";
import { compiled, isSectionFile, withContoursAsParts, withPartOnTop,
         without } from "../../../web/page/section_file.js";
import { packed, unpacked } from "../../../web/page/share.js";
import { snapped, typedPoint, typedPoints } from "../../../web/page/snap.js";
import { inUnit, movedWhole, turnedWhole } from "../../../web/page/whole.js";
import { forcesFor } from "../../../web/page/units.js";
import { inPageWords, withPageWords } from "../../../web/page/words.js";

const areaOf = (ring) => ring.reduce((sum, [x, y], index) => {
    const [x1, y1] = ring[(index + 1) % ring.length];
    return sum + (x * y1 - x1 * y) / 2;
}, 0);

const isNear = (actual, expected, scale, what) =>
    assert.ok(Math.abs(actual - expected) <= 1e-12 * scale, `${what}: ${actual}, not ${expected}`);

test("fillets keep the area of their arcs, whichever way the ring runs and however it is turned", () => {
    const square = [[0, 0], [100, 0], [100, 60], [0, 60]];
    const skew = [[0, 0], [120, 0], [90, 70], [20, 50]];
    // Of each corner a fillet cuts r^2 (tan(t / 2) - t / 2), t the turn of the outline.
    const cutAt = ([x, y], [bx, by], [ax, ay]) => {
        const cosine = ((bx - x) * (ax - x) + (by - y) * (ay - y)) /
            (Math.hypot(bx - x, by - y) * Math.hypot(ax - x, ay - y));
        const turn = Math.PI - Math.acos(cosine);
        return 49 * (Math.tan(turn / 2) - turn / 2);
    };
    for (const ring of [square, skew, square.slice().reverse(), skew.slice().reverse()]) {
        for (const [c, s] of [[1, 0], [0.6, 0.8]]) {
            const turned = ring.map(([x, y]) => [c * x - s * y, s * x + c * y]);
            const cut = turned.reduce((sum, point, index) =>
                sum + cutAt(point, turned[(index + 3) % 4], turned[(index + 1) % 4]), 0);
            const area = Math.abs(areaOf(roundedRing(turned, [7, 7, 7, 7], 0.001)));
            isNear(area, Math.abs(areaOf(turned)) - cut, 6000, JSON.stringify(turned));
        }
    }
    const angle = [[0, 0], [50, 0], [50, 10], [10, 10], [10, 50], [0, 50]];
    isNear(areaOf(roundedRing(angle, [0, 0, 0, 8, 0, 0], 0.001)), 900 + 64 * (1 - Math.PI / 4), 900, "root");
    const wide = square.map(([x, y]) => [1e18 * x, 1e18 * y]);
    assert.ok(roundedRing(wide, [1e19, 0, 0, 0], 0.001).length < 20_000, "chords where the tolerance is lost");
    assert.throws(() => roundedRing(angle, [0, 6, 6, 0, 0, 0], 0.001), /points 2 and 3/);
    isNear(areaOf(roundedRing(angle, [0, 5, 5, 0, 0, 0], 0.001)), 900 - 50 * (1 - Math.PI / 4), 900, "toe");
});

test("a dragged corner lies where the part puts it", () => {
    for (const part of [{}, { move: [3, -4] }, { mirror: "x", rotate: 90, move: [1, 2] },
                        { mirror: "y", rotate: -33.3 }]) {
        const [x, y] = placed(part, unplaced(part, [12.5, -7]));
        isNear(x, 12.5, 20, JSON.stringify(part));
        isNear(y, -7, 20, JSON.stringify(part));
    }
    assert.deepEqual(placed({ mirror: "x", rotate: 90, move: [10, 0] }, [2, 3]), [13, 2]);
});

test("typed coordinates are absolute, relative or polar; anything else is told by its line", () => {
    for (const [text, expected] of [["10, 20", [10, 20]], ["10 20", [10, 20]], ["-1.5;2,25", [-1.5, 2.25]],
                                    ["@5, -5", [6, -4]], ["10<90", [1, 11]], ["1e2,.5", [100, 0.5]]]) {
        assert.deepEqual(typedPoint(text, [1, 1]), expected, text);
    }
    for (const text of ["10", "x, y", "1,2,3", "10<", ""]) assert.equal(typedPoint(text, null), null, text);
    assert.match(typedPoints("0, 0\n10, 0\nten, 0").problem, /Line 3/);
    assert.deepEqual(typedPoints("0, 0\n@10, 0\n@0, 5").points, [[0, 0], [10, 0], [10, 5]]);
});

test("the pointer snaps to a corner, else level with one, else to the grid", () => {
    const corners = [[33.3, 71.7]];
    assert.deepEqual(snapped([34, 71], corners, 4), { point: [33.3, 71.7], to: "corner" });
    assert.deepEqual(snapped([33.5, 20.4], corners, 4), { point: [33.3, 20], to: "level" });
    assert.deepEqual(snapped([52.2, 20.4], corners, 4), { point: [52, 20], to: "grid" });
    assert.deepEqual(snapped([0.3021, 0.7], [], 2000).point, [0.3, 0.7]);
});

test("undo and redo walk through values; edits of one name are one step", () => {
    let history = historyOf("a");
    history = edited(history, "b", "drag 1");
    history = edited(history, "c", "drag 1");
    history = edited(history, "d", "drag 2");
    assert.equal(undone(history).present, "c");
    assert.equal(undone(undone(history)).present, "a");
    assert.equal(redone(undone(history)).present, "d");
    assert.deepEqual(edited(undone(history), "e").future, []);
    assert.equal(undone(historyOf("a")).present, "a");
});

test("parts stand on the last solid one; what stood on a deleted part stays by itself", () => {
    const girder = { version: 1, unit: "mm", parts: [{ profile: "HEB300" }] };
    const built = withPartOnTop(girder, { shape: "plate", width: 200, height: 15 });
    assert.deepEqual(built.parts[0], { profile: "HEB300", name: "HEB300" });
    assert.equal(built.parts[1].on, "HEB300");
    assert.equal(girder.parts.length, 1);
    const first = { list: "parts", index: 0, item: built.parts[0] };
    assert.deepEqual(without(built, first).parts, [{ shape: "plate", width: 200, height: 15 }]);
    const hole = withPartOnTop(built, { shape: "round", diameter: 20, kind: "hole" });
    assert.equal(hole.parts[2].on, undefined);
    const points = [[0, 0], [1, 0], [0, 1]];
    const read = withContoursAsParts({ version: 1, unit: "mm", contours: [
        { kind: "solid", name: "line 3", points }, { kind: "hole", name: "duct", points }] });
    assert.deepEqual(read.parts, [{ points }, { name: "duct", points, kind: "hole" }]);
    assert.equal("parts" in compiled({ version: 1, unit: "mm", parts: [] }), false);
    for (const list of ["parts", "contours"]) {
        const item = { points: [[0, 0], [9, 0], [9, 9], [0, 9]], radii: [0, 0, 2, 0] };
        const [drawn] = compiled({ version: 1, unit: "mm", [list]: [item] })[list];
        assert.equal("radii" in drawn, false, list);
        isNear(areaOf(drawn.points), 81 - 4 * (1 - Math.PI / 4), 81, list);
    }
});

test("an address restores what it was made of, and what is no section is told", async () => {
    const work = { f: { version: 1, unit: "mm", name: "Träger – 木", parts: [{ profile: "IPE300" }] } };
    const hash = await packed(work);
    assert.match(hash, /^[\w-]+$/);
    assert.deepEqual(await unpacked(hash), work);
    await assert.rejects(unpacked(hash.slice(0, -9)));
    for (const wrong of [null, [], {}, { unit: 5 }, { unit: "mm", parts: [null] }, { unit: "mm", parts: {} },
                         { unit: "mm", parts: [{ points: [[0]] }] }, { unit: "mm", parts: [{ move: "x" }] }]) {
        assert.equal(isSectionFile(wrong), false, JSON.stringify(wrong));
    }
    assert.equal(isSectionFile(work.f), true);
});

test("a typed name finds its profile in any usual spelling", () => {
    const names = ["IPE80", "IPE300", "HEB300", "L100x100x10", "CHS114.3x5", "SHS100x5"];
    for (const [typed, first] of [["ipe 300", "IPE300"], ["HE 300 B", "HEB300"], ["l 100×100×10", "L100x100x10"],
                                  ["chs114,3", "CHS114.3x5"], ["300", "IPE300"]]) {
        assert.equal(matching(names, typed)[0], first, typed);
    }
});

test("forces in kN and kNm give stresses in N/mm², kips give ksi", () => {
    // N / A and M / W of a square bar.
    for (const [unit, side] of [["mm", 100], ["cm", 10], ["m", 0.1]]) {
        isNear(forcesFor({ N: 50 }, unit).N / side ** 2, 5, 10, unit);
        isNear(forcesFor({ Mx: 2 }, unit).Mx / (side ** 3 / 6), 12, 24, unit);
    }
    isNear(forcesFor({ N: 32 }, "in").N / 16, 2, 2, "in");
    isNear(forcesFor({ Mx: 1 }, "in").Mx, 12, 12, "kip ft");
});

test("outlines belong to their parts whatever these are called, rows and what stands on them too", () => {
    const parts = [{ name: "web", shape: "plate", repeat: { count: 2, step: [50, 0] } },
                   { shape: "plate", on: "web 2", side: "top" }, { name: "web 2", shape: "plate", on: "web", side: "top" },
                   { shape: "plate", on: "web 2", side: "top" }];
    const named = withOwnNames({ version: 1, unit: "mm", parts });
    assert.deepEqual(named.parts.map(({ name, on }) => [name, on]),
                     [["#0", undefined], ["#1", "#0 2"], ["#2", "#0"], ["#3", "#2"]]);
    const square = (x, element) => ({ element, isHole: false, points: [[x, 0], [x + 10, 0], [x + 10, 10], [x, 10]] });
    const outlines = [square(0, 0), square(30, 1)];
    assert.deepEqual(snappedShift([19.3, 0.4], outlines, 0, 1, 5), [20, 0]);
    assert.deepEqual(snappedShift([13.3, 0.4], outlines, 0, 1, 5), [15, 0]);
});

test("a section that is turned all round or twice over is the same, and what stands on another turns with it", () => {
    const parts = [{ shape: "plate", width: 30, height: 8, at: "bottom_left", rotate: 20, move: [3, -4] },
                   { name: "b", shape: "plate", mirror: "x", rotate: -90, repeat: { count: 3, step: [7, 0] } },
                   { shape: "angle", on: "b", side: "left", align: "top", move: [1, 2] },
                   { shape: "angle", on: "b", side: "bottom", align: "right", gap: 2, mirror: "y" }];
    const section = { version: 1, unit: "mm", parts, contours: [{ kind: "solid", points: [[1, 2], [5, 2], [3, 9]] }] };
    // Mirrored left to right is mirrored top to bottom and half a turn.
    const alike = (file) => ({ ...file, parts: file.parts.map((part) => {
        const rotate = (((part.rotate ?? 0) + (part.mirror === "y" ? 180 : 0)) % 360 + 360) % 360;
        return { ...part, rotate, mirror: Boolean(part.mirror) };
    }) });
    for (const steps of [["left", "left", "left", "left"], ["left", "right"], ["mirrorX", "mirrorX"],
                         ["mirrorY", "mirrorY"], ["mirrorX", "mirrorY", "left", "left"]]) {
        const all = steps.reduce((file, step) => turnedWhole(file, step), section);
        assert.deepEqual(alike(all), alike(section), steps.join(" "));
    }
    const turned = turnedWhole(section, "left").parts;
    assert.deepEqual([turned[0].at, turned[0].rotate, turned[0].move], ["bottom_right", 110, [4, 3]]);
    assert.deepEqual([turned[2].side, turned[2].align, turned[3].side, turned[3].align],
                     ["bottom", "left", "right", "top"]);
    assert.deepEqual(movedWhole(section, [1, 2]).contours[0].points[0], [2, 4]);
    assert.deepEqual(movedWhole(section, [1, 2]).parts.map(({ move }) => move),
                     [[4, -2], [1, 2], [1, 2], undefined]);
});

test("nothing that the engine says sends a reader of the page to a command line", () => {
    const folder = fileURLToPath(new URL("../../../engine/", import.meta.url));
    const sources = readdirSync(folder, { recursive: true }).filter((name) => /\.(cpp|h)$/.test(name));
    const said = sources.flatMap((name) => readFileSync(folder + name, "utf8").replace(/"\s*\n\s*"/g, "")
        .match(/"[^"\n]*(?<![-\w])--[a-z][^"\n]*"/g) ?? []);
    assert.ok(said.length > 15, `${said.length} messages with options`);
    for (const text of said) assert.doesNotMatch(inPageWords(text.slice(1, -1)), /--[a-z]|halvorn-section /, text);
    assert.equal(inPageWords("hide its layer or name the section's with --layer"),
                 "hide its layer or tick the section's layers alone on the left");
    const value = { why_missing: "it takes a solution; --warping asks for it in a batch" };
    const answer = withPageWords({ values: { groups: [{ values: [value] }] }, findings: [{ problem: "give --unit" }] });
    assert.equal(answer.values.groups[0].values[0].why_missing, "it takes a solution");
    assert.match(answer.findings[0].problem, /“Unit of the file”/);
});

test("what is shown is settled once all that is asked for is computed, the section beside it too, or refused", () => {
    const [section, beside] = [{ unit: "mm", parts: [{ profile: "IPE300" }] }, { unit: "m", parts: [{ profile: "HEB300" }] }];
    const asked = { unit: "cm", options: {}, forces: {}, figure: "section" };
    const result = { section, isComplete: true, asked };
    const state = { ...asked, history: historyOf({ section, beside, origin: null }), result, besideResult: { of: beside, unit: "cm" } };
    assert.equal(isSettled(state), true);
    for (const change of [{ unit: "m" }, { forces: { N: 1 } }, { besideResult: null }, { besideResult: { of: beside, unit: "mm" } },
                          { result: { ...result, isComplete: false } }, { result: { ...result, section: beside } }]) {
        assert.equal(isSettled({ ...state, ...change }), false, JSON.stringify(change));
    }
    assert.equal(isSettled({ ...state, forces: { N: 1 }, result: { ...result, error: "refused" } }), true);
});

test("a section in another unit has its lengths scaled, once each, and nothing else", () => {
    const shapes = [{ kind: "channel", dimensions: [{ key: "thickness", power: 1 }, { key: "slope", power: 0 }] }];
    const part = (k) => ({ shape: "channel", thickness: 8 * k, slope: 5, rotate: 30, modular_ratio: 2, move: [10 * k, -20 * k],
                           gap: 3 * k, repeat: { count: 2, step: [40 * k, 0] } });
    const file = (unit, k) => ({ version: 1, unit, density: 7850, contours: [{ kind: "solid", points: [[k, 0], [2 * k, 0], [k, k]], radii: [0, 0, k] }],
                                 parts: [part(k), { wall: { kind: "open", thickness: 2 * k, points: [[0, 0], [9 * k, 0]] } }] });
    assert.deepEqual(inUnit(file("mm", 10), "cm", shapes), file("cm", 1));
    assert.deepEqual(inUnit(file("m", 1), "mm", shapes), file("mm", 1000));
});

/** A worker that answers, or dies, when it is told to. */
class Puppet {
    static all = [];
    sent = [];
    constructor() {
        Puppet.all.push(this);
    }
    postMessage(message) {
        this.sent.push(message);
    }
    terminate() {
        this.isEnded = true;
    }
    answer(id, answer) {
        this.onmessage({ data: { id, answer } });
    }
    die(message) {
        this.onerror({ message, preventDefault() {} });
    }
}

test("a worker that dies is replaced and its calls fail, one that never answered is not", async () => {
    Puppet.all = [];
    const engine = new EngineClient(() => new Puppet(), "source");
    const first = engine.call({ op: "version" });
    Puppet.all[0].answer(1, "0.1");
    assert.equal(await first, "0.1");
    const lost = engine.call({ op: "evaluate" });
    Puppet.all[0].die("out of memory");
    await assert.rejects(lost, /out of memory/);
    const again = engine.call({ op: "evaluate" });
    assert.deepEqual(Puppet.all[1].sent, [{ load: "source" }, { id: 3, request: { op: "evaluate" } }]);
    Puppet.all[1].answer(3, "values");
    assert.equal(await again, "values");
    const stillborn = new EngineClient(() => new Puppet(), "source");
    Puppet.all[2].die("no such thing");
    await assert.rejects(stillborn.call({ op: "version" }), /no such thing/);
    assert.equal(Puppet.all.length, 3);
});

test("of requests that come while one is under way the last alone is sent, and one that is late is ended", async () => {
    Puppet.all = [];
    const quick = new Latest(new EngineClient(() => new Puppet(), "source"));
    const [under, overtaken, last] = [quick.call("b"), quick.call("c"), quick.call("d")];
    await assert.rejects(overtaken, Overtaken);
    Puppet.all[0].answer(1, "B");
    assert.equal(await under, "B");
    await new Promise(setImmediate);
    Puppet.all[0].answer(2, "D");
    assert.equal(await last, "D");
    const late = new Latest(new EngineClient(() => new Puppet(), "source"), 0);
    const slow = late.call("e");
    const start = performance.now();
    while (performance.now() - start < 3);
    const wanted = late.call("f");
    await assert.rejects(slow, Overtaken);
    assert.equal(Puppet.all[1].isEnded, true);
    await new Promise(setImmediate);
    Puppet.all[2].answer(2, "F");
    assert.equal(await wanted, "F");
});
