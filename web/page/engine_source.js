// @ts-check
// Where the workers and their engine come from: out of the page itself where it is one file, else
// from the files beside it.

/** What the worker loads its engine from. */
export async function engineSource() {
    const packed = document.getElementById("engine");
    if (packed) return { packed: packed.textContent.trim() };
    return { url: new URL("../module/halvorn_engine.wasm", import.meta.url).href };
}

let workerUrl = "";

/** @returns {Worker} */
export function makeWorker() {
    const text = document.getElementById("worker")?.textContent;
    if (text && !workerUrl) workerUrl = URL.createObjectURL(new Blob([text], { type: "text/javascript" }));
    return workerUrl ? new Worker(workerUrl)
        : new Worker(new URL("./worker.js", import.meta.url), { type: "module" });
}
