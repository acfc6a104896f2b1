// Runs a WebAssembly program that prints: run_wasi.mjs PROGRAM.wasm
import {readFileSync} from "node:fs";
import {WASI} from "node:wasi";

const wasi = new WASI({version: "preview1"});
const module = new WebAssembly.Module(readFileSync(process.argv[2]));
const env = {emscripten_notify_memory_growth() {}};
const instance = new WebAssembly.Instance(module, {env, wasi_snapshot_preview1: wasi.wasiImport});
process.exitCode = wasi.start(instance);
