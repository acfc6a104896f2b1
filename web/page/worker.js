// @ts-check
// The engine's side of the page: answers requests one by one.

import { load } from "../module/halvorn_engine.js";

/** @type {Promise<any>} */
let engine;

/** @param {{packed?: string, url?: string}} source the compressed engine in the page itself, or
 *  where it is beside it while the page is being worked on */
async function engineFrom(source) {
    if (source.url) return load(source.url);
    const stream = new Blob([bytesOf(source.packed)]).stream().pipeThrough(new DecompressionStream("gzip"));
    // It is compiled while it unpacks.
    const headers = { "content-type": "application/wasm" };
    return load(await WebAssembly.compileStreaming(new Response(stream, { headers })));
}

// Of base 85, as web/bundle writes them.
const DIGITS = "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz!#$%.()*+-;,=>?@^_`{|}~";

// How many bytes at the end are none, then five digits for each four bytes.
function bytesOf(packed) {
    const values = new Uint8Array(128);
    for (let digit = 0; digit < DIGITS.length; ++digit) values[DIGITS.charCodeAt(digit)] = digit;
    const bytes = new Uint8Array((packed.length - 1) / 5 * 4);
    const view = new DataView(bytes.buffer);
    for (let from = 1, to = 0; from < packed.length; to += 4) {
        let value = 0;
        for (const end = from + 5; from < end; ++from) value = value * 85 + values[packed.charCodeAt(from)];
        view.setUint32(to, value);
    }
    return bytes.subarray(0, bytes.length - Number(packed[0]));
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
