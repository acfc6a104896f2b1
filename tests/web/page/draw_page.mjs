// Draws docs/images/page.png: the page with the crane girder of examples/.

import { Window, example, fileAddress, launch } from "./browser.mjs";

const browser = await launch();
const window = await Window.open(browser, fileAddress, { viewport: { width: 1440, height: 810 } });
await window.drop("crane-girder.json", example("crane-girder.json"));
await window.value("torsion_constant");
await window.page.locator('[data-element="1"]').click({ position: { x: 20, y: 6 } });
await window.page.waitForSelector('[data-element="1"].chosen');
await window.page.mouse.move(0, 0);
await window.page.screenshot({ path: new URL("../../../docs/images/page.png", import.meta.url).pathname });
await window.close();
await browser.close();
