// Bundles the tests and runs them with Node's own runner.
//
//   node tests/run.mjs [NAME...]     only the files whose names hold one of these
import { spawnSync } from "node:child_process";
import { readdirSync, rmSync } from "node:fs";
import { fileURLToPath } from "node:url";
import { build } from "esbuild";

const here = (path) => fileURLToPath(new URL(path, import.meta.url));
// Where the packages that the tests import are found.
const out = here("../node_modules/.tests");
const wanted = process.argv.slice(2);
const tests = readdirSync(here("."))
  .filter((name) => name.endsWith("_test.ts"))
  .filter((name) => wanted.length === 0 || wanted.some((part) => name.includes(part)));

rmSync(out, { recursive: true, force: true });
await build({
  entryPoints: tests.map((name) => here(name)),
  bundle: true,
  platform: "node",
  format: "esm",
  target: "node18",
  packages: "external",
  outdir: out,
  outExtension: { ".js": ".mjs" },
  define: { PAGE_ROOT: JSON.stringify(here("..")) },
  logLevel: "warning",
});
const files = tests.map((name) => `${out}/${name.replace(/\.ts$/, ".mjs")}`);
const run = spawnSync(process.execPath, ["--test", "--test-reporter=spec", ...files], {
  stdio: "inherit",
});
process.exit(run.status ?? 1);
