// The values of the library's class agree with those of the build machine, as on other platforms.
import {execFileSync} from "node:child_process";
import {test} from "node:test";

import {root} from "./engine.mjs";

test("the platform values", context => {
  const command = ["tests/platform/compare_values", process.env.HALVORN_PLATFORM_VALUES, process.execPath,
    "--no-warnings", "tests/web/module/run_wasi.mjs", "build/web/web/halvorn_platform_values.wasm"];
  // Fails where they do not, or where either is not built.
  context.diagnostic(execFileSync("python3", command, {cwd: root, encoding: "utf8"}));
});
