// The module's results are those of the command-line tool, to the byte.
import assert from "node:assert/strict";
import {test} from "node:test";

import {engine, examples, onEach, toolPrints} from "./engine.mjs";

const answerTo = (section, want, options = {}) =>
  engine.call({op: "evaluate", section, options: {warping: true, ...options}, want: [want]})[want];

test("the table of every profile of the catalogue", async () => {
  const {names} = engine.call({op: "names"});
  assert.ok(names.length > 800, `${names.length} profiles`);
  const others = [];
  await onEach(names, async name => {
    if (answerTo({profile: name}, "table") !== await toolPrints(name)) others.push(name);
  });
  assert.deepEqual(others, []);
});

test("table, findings and figure of every example", async () => {
  const sections = examples();
  assert.ok(sections.length > 15, `${sections.length} examples`);
  for (const section of sections) {
    assert.equal(answerTo(section, "table"), await toolPrints(section.source), section.source);
    const classValues = await toolPrints("--class-values", section.source);
    assert.equal(answerTo(section, "table", {class_values: true}), classValues, section.source);
    const found = await toolPrints("--check", section.source).catch(error => error.stdout);
    const {findings} = engine.call({op: "diagnose", section});
    const lines = findings.map(({severity, text}) => `${severity}: ${text}`);
    for (const line of lines) assert.ok(found.replace(/\s+/g, " ").includes(line), `${line} not in ${found}`);
  }
});

test("the table in another unit and under forces", async () => {
  const forces = {N: -250e3, Mx: 2e7, Vy: 5e4, T: 1e5};
  const words = Object.entries(forces).map(([name, force]) => `${name}=${force}`).join(",");
  const printed = await toolPrints("HEB200", "--forces", words, "--poisson", "0.3", "--density", "7850");
  assert.equal(answerTo({profile: "HEB200"}, "table", {forces, poisson: 0.3, density: 7850}), printed);
  assert.equal(answerTo({profile: "L100x100x10", unit: "in"}, "table"),
    await toolPrints("L100x100x10", "--unit", "in"));
});
