// @ts-check
// The engine's side of the page: answers requests one by one.

import { load } from "../module/halvorn_engine.js";

/** @type {Promise<any>} */
let engine;

/** @param {{base64?: string, url?: string}} source the compressed engine in the page itself, or
 *  where it is beside it while the page is being worked on */
async function engineFrom(source) {
    if (source.url) return load(source.url);
    const stream = new Blob([bytesOf(source.base64)]).stream().pipeThrough(new DecompressionStream("gzip"));
    // It is compiled while it unpacks.
    const headers = { "content-type": "application/wasm" };
    return load(await WebAssembly.compileStreaming(new Response(stream, { headers })));
}

function bytesOf(base64) {
    if ("fromBase64" in Uint8Array) return /** @type {any} */ (Uint8Array).fromBase64(base64);
    const text = atob(base64);
    const bytes = new Uint8Array(text.length);
    for (let index = 0; index < text.length; ++index) bytes[index] = text.charCodeAt(index);
    return bytes;
}

function fieldsOf(error) {
    const { message, source, place, problem, mend } = error;
    return { message: String(message ?? error), source, place, problem, mend };
}

self.onmessage = async ({ data }) => {
    if (data.load) {
        engine = engineFrom(data.load);
        engine.catch(() => {});  // each call reports it
        return;
    }
    try {
        const answer = (await engine).call(data.request);
        self.postMessage({ id: data.id, answer });
    } catch (error) {
        // What is no complaint about the input leaves the engine in an unknown state.
        const isBroken = error instanceof WebAssembly.RuntimeError;
        self.postMessage({ id: data.id, error: fieldsOf(error), isBroken });
    }
};
