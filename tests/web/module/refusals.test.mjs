// Whatever comes in, the engine says what is wrong and goes on.
import assert from "node:assert/strict";
import {readFileSync} from "node:fs";
import {afterEach, test} from "node:test";

import {load, SectionError} from "../../../build/web/module/node.js";
import {engine, examples, root} from "./engine.mjs";

const area = (of = engine) => {
  const [{values}] = of.call({op: "evaluate", section: {profile: "IPE300"}, want: ["values"]}).values.groups;
  return values[0].text;
};

/** The error of a section; the test fails when there is none. */
function errorOf(section, of = engine) {
  try {
    of.call({op: "evaluate", section: {source: "bad", ...section}, want: ["values"]});
  } catch (error) {
    assert.ok(error instanceof SectionError, String(error));
    assert.ok(error.problem.length > 0 && error.mend.length > 0, error.message);
    return error;
  }
  return assert.fail(`no error of ${JSON.stringify(section).slice(0, 200)}`);
}

afterEach(() => assert.equal(area(), "5381.202"));

const file = members => JSON.stringify({version: 1, unit: "mm", ...members});

test("texts that are no sections", () => {
  const texts = ["", " ", "\0", "{", "[]", "null", "{}", "\uFEFF", "\uFFFD\uFFFD", "{\"version\": 2}",
    "NaN", "1e999", "\"", "{\"version\": 1, \"version\": 1}", "x".repeat(1 << 20), "\ud800"];
  for (const text of texts) {
    for (const format of ["json", "dxf", "csv"]) errorOf({text, format});
  }
});

test("sections with one fault each, at its place", () => {
  const points = [[0, 0], [10, 0], [10, 10]];
  const faults = [
    [{contours: [{kind: "solid", points: [[0, 0], [1, 1]]}]}, "/contours/0/points"],
    [{contours: [{kind: "round", points}]}, "/contours/0/kind"],
    [{contours: [{kind: "solid", points: [[0, 0], [10, 0], [10, "a"]]}]}, "/contours/0/points/2/1"],
    [{parts: [{shape: "i", height: -1, width: 1, web: 1, flange: 1}]}, "/parts/0/height"],
    [{parts: [{profile: "IPE3000"}]}, "/parts/0/profile"],
    [{unit: "ft", contours: [{kind: "solid", points}]}, "/unit"],
  ];
  for (const [members, place] of faults) assert.equal(errorOf({text: file(members)}).place, place);
});

test("examples cut off anywhere are read, or refused in words", () => {
  let refused = 0;
  for (const {text, ...rest} of examples()) {
    for (let share = 1; share < 8; ++share) {
      const section = {...rest, text: text.slice(0, Math.floor(text.length * share / 8))};
      try {
        engine.call({op: "evaluate", section, want: ["values", "svg"]});
      } catch (error) {
        assert.ok(error instanceof SectionError && error.problem !== "", String(error));
        ++refused;
      }
    }
  }
  assert.ok(refused > 100, `${refused} refused`);
});

test("JSON 5,000 deep, in a section and in a request", () => {
  for (const [open, close] of [["[", "]"], ["{\"a\":", "}"]]) {
    const text = open.repeat(5000) + "1" + close.repeat(5000);
    assert.match(errorOf({text}).problem, /nested more than 32 deep/);
    assert.match(errorOf({text: file({}).replace("}", `,"contours":${text}}`)}).problem, /nested/);
    assert.throws(() => engine.call({op: "version", more: JSON.parse(text)}), SectionError);
  }
});

test("100,000 vertices", () => {
  const points = Array.from({length: 100000}, (_, i) => {
    const angle = 2 * Math.PI * i / 100000;
    return [500 * Math.cos(angle), 300 * Math.sin(angle)];
  });
  const section = {text: file({contours: [{kind: "solid", points}]})};
  const {values} = engine.call({op: "evaluate", section, want: ["values"]});
  const [{values: [first]}] = values.groups;
  // That of an ellipse less the gaps below its chords.
  const share = Math.sin(2 * Math.PI / 100000) / (2 * Math.PI / 100000);
  // Rounding of so many terms: 1e5 times 1.1e-16.
  assert.ok(Math.abs(first.number / (Math.PI * 500 * 300 * share) - 1) < 1.1e-11, first.text);
});

test("exhausted memory", async () => {
  const bytes = readFileSync(`${root}/build/web/module/halvorn_engine.wasm`);
  const small = await load(bytes, {memoryLimit: 24 << 20});
  const comb = count => {
    const points = Array.from({length: count}, (_, i) => [i % 2 === 0 ? i : i + 0.25, i * i]);
    return {text: file({contours: [{kind: "solid", points}]})};
  };
  // Again and again: nothing stays behind.
  for (const tooLarge of [{text: " ".repeat(30 << 20)}, ...[60, 100, 200].map(k => comb(1000 * k))]) {
    assert.match(errorOf(tooLarge, small).problem, /memory/);
    assert.equal(area(small), "5381.202");
    small.call({op: "evaluate", section: comb(20000), want: ["values"]});
  }
});

test("a request that cannot be written leaves the engine as it was", async () => {
  const own = await load();
  const endless = {op: "version"};
  endless.more = endless;
  assert.throws(() => own.call(endless), SectionError);
  assert.equal(area(own), "5381.202");
});
