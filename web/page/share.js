// @ts-check
// A state as the part of an address behind the #, which never leaves the browser, and the digest
// that a printed sheet carries.

/** Longer addresses are cut by the programs that carry them [characters]. */
export const LONGEST_HASH = 100_000;

/** What unpacks to more than this was not made here [characters]. */
const LONGEST_TEXT = 20_000_000;

/** @param {any} value @returns {Promise<string>} for the address, without the # */
export async function packed(value) {
    const text = new TextEncoder().encode(JSON.stringify(value));
    const bytes = await piped(text, new CompressionStream("deflate-raw"), Infinity);
    let binary = "";
    for (let start = 0; start < bytes.length; start += 8192) {
        binary += String.fromCharCode(...bytes.subarray(start, start + 8192));
    }
    return btoa(binary).replace(/\+/g, "-").replace(/\//g, "_").replace(/=+$/, "");
}

/** @param {string} hash as `packed` gave it @returns {Promise<any>}
 *  @throws for a text that is none of these */
export async function unpacked(hash) {
    const binary = atob(hash.replace(/-/g, "+").replace(/_/g, "/"));
    const bytes = Uint8Array.from(binary, (character) => character.charCodeAt(0));
    const text = await piped(bytes, new DecompressionStream("deflate-raw"), LONGEST_TEXT);
    return JSON.parse(new TextDecoder("utf-8", { fatal: true }).decode(text));
}

async function piped(bytes, stream, longest) {
    const reader = new Blob([bytes]).stream().pipeThrough(stream).getReader();
    const pieces = [];
    let length = 0;
    for (;;) {
        const { done, value } = await reader.read();
        if (done) break;
        length += value.length;
        if (length > longest) throw new RangeError("The address holds too much.");
        pieces.push(value);
    }
    return new Uint8Array(await new Blob(pieces).arrayBuffer());
}

/** SHA-256 of a text in UTF-8, as `sha256sum` prints it; empty where the browser offers none: a
 *  page that neither comes from disk nor over a secure connection.
 *  @param {string} text */
export async function digestOf(text) {
    if (!globalThis.crypto?.subtle) return "";
    const hash = await crypto.subtle.digest("SHA-256", new TextEncoder().encode(text));
    return Array.from(new Uint8Array(hash), (byte) => byte.toString(16).padStart(2, "0")).join("");
}
