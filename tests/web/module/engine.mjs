// What the tests of the module share.
import {execFile} from "node:child_process";
import {readdirSync, readFileSync} from "node:fs";
import {fileURLToPath} from "node:url";
import {promisify} from "node:util";

import {load} from "../../../build/web/module/node.js";

export const root = fileURLToPath(new URL("../../../", import.meta.url));
export const engine = await load();

const run = promisify(execFile);

/** What the command-line tool prints. */
export async function toolPrints(...options) {
  const {stdout} = await run(process.env.HALVORN_TOOL, options, {cwd: root, maxBuffer: 1 << 26});
  return stdout;
}

/** The sections of examples/ as requests have them, with their paths as sources. */
export function examples() {
  return readdirSync(`${root}/examples`)
    .filter(name => /\.(json|dxf|csv)$/.test(name))
    .map(name => {
      const source = `examples/${name}`;
      const format = name.split(".").pop();
      return {text: readFileSync(root + source, "utf8"), format, source};
    });
}

/** Does work on every item, as many at a time as the machine has cores for. */
export async function onEach(items, work, atOnce = 2) {
  const left = items.entries();
  const worker = async () => {
    for (const [, item] of left) await work(item);
  };
  await Promise.all(Array.from({length: atOnce}, worker));
}
