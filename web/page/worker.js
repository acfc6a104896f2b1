// @ts-check
// The engine's side of the page: answers requests one by one.

import { load } from "../module/halvorn_engine.js";

/** @type {Promise<any>} */
let engine;

/** @param {{base64?: string, url?: string}} source the compressed engine in the page itself, or
 *  where it is beside it while the page is being worked on */
async function engineFrom(source) {
    if (source.url) return load(source.url);
    const packed = Uint8Array.from(atob(source.base64), (character) => character.charCodeAt(0));
    const stream = new Blob([packed]).stream().pipeThrough(new DecompressionStream("gzip"));
    return load(await new Response(stream).arrayBuffer());
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
