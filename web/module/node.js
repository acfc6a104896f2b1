// The same for Node, whose fetch reads no files.
import {readFile} from "node:fs/promises";

import * as engine from "./halvorn_engine.js";

export {SectionError} from "./halvorn_engine.js";

export async function load(source = new URL("./halvorn_engine.wasm", import.meta.url), options = {}) {
  const isFile = source instanceof URL && source.protocol === "file:";
  return engine.load(isFile ? await readFile(source) : source, options);
}
