// The page in Debian's Firefox, where it is installed, from disk and from a server on this machine.

import assert from "node:assert/strict";
import { test } from "node:test";

import { fileAddress, serve } from "./browser.mjs";
import { Firefox, hasFirefox } from "./firefox.mjs";

const ENTER = "\uE007";
const IPE300_AREA = 2 * 150 * 10.7 + (300 - 2 * 10.7) * 7.1 + (4 - Math.PI) * 15 ** 2;
const number = (key) => `parseFloat(document.querySelector('#values [data-key="${key}"] .number')?.textContent)`;

const skip = hasFirefox() ? false : "there is no firefox-esr";
for (const where of ["from disk", "from a server"]) {
    test(`Firefox, ${where}: a profile is found, and its address restores it`, { skip }, async () => {
        const server = await serve();
        const address = where === "from disk" ? fileAddress : server.url;
        const firefox = await Firefox.open(address);
        try {
            await firefox.waitFor("document.querySelector('.chip') !== null");
            await firefox.type("#profile-search", "ipe 300");
            await firefox.waitFor("document.querySelector('#profile-list .profile-name') !== null");
            await firefox.type("#profile-search", ENTER);
            await firefox.waitFor(`Math.abs(${number("area")} - ${IPE300_AREA}) < 1e-3`);
            await firefox.waitFor(`Math.abs(${number("torsion_constant")} - 197530) < 20`);
            const hash = await firefox.waitFor("location.hash");
            await firefox.go("about:blank");
            await firefox.go(address + hash);
            await firefox.waitFor(`Math.abs(${number("area")} - ${IPE300_AREA}) < 1e-3`);
            const outside = firefox.requests.filter((url) => !/^(blob|data|about):/.test(url) && url.replace(/#.*/, "") !== address);
            assert.deepEqual(outside, [], "requests");
            assert.deepEqual(firefox.complaints, [], "complaints of the browser");
        } finally {
            await firefox.close();
            server.close();
        }
    });
}
