// Bundles the page into one file, dist/page.html: markup, style and packed script. clist puts
// the data in place of @DATA@ and changes nothing else, so that the hashes by which the
// page's security policy knows its script and style are settled here.
//
//   node build.mjs [OUT_DIR]     by default dist
import { createHash } from "node:crypto";
import { mkdirSync, readFileSync, writeFileSync } from "node:fs";
import { fileURLToPath } from "node:url";
import { build } from "esbuild";
import pako from "pako";

const here = (path) => fileURLToPath(new URL(path, import.meta.url));
const out = process.argv[2] ?? here("dist");

const sources = new Set();

async function bundle(entry) {
  const result = await build({
    entryPoints: [here(entry)],
    bundle: true,
    minify: true,
    write: false,
    format: "iife",
    target: ["chrome111", "firefox115", "safari16.4"],
    charset: "ascii",
    legalComments: "none",
    logLevel: "warning",
    metafile: true,
    absWorkingDir: here("."),
  });
  Object.keys(result.metafile.inputs).forEach((input) => sources.add(input));
  const text = result.outputFiles[0].text.trim();
  if (/<\/(script|style)|<!--/i.test(text)) {
    throw new Error(`${entry}: its text would end the element that holds it`);
  }
  return text;
}

const hash = (text) => `'sha256-${createHash("sha256").update(text).digest("base64")}'`;

// The licences of what is bundled: whose packages they are, then each text once.
function licences() {
  const owners = new Map();
  for (const input of sources) {
    const folder = /^(.*node_modules\/(?:@[^/]+\/)?[^/]+)\//.exec(input)?.[1];
    if (folder) {
      const licence = readFileSync(here(`${folder}/LICENSE`), "utf8").trim();
      const { name, version } = JSON.parse(readFileSync(here(`${folder}/package.json`), "utf8"));
      const copyright = /^Copyright.*$/m.exec(licence)[0];
      const text = licence.slice(licence.indexOf("Permission is hereby")).replaceAll(/\s+/g, " ");
      owners.set(text, (owners.get(text) ?? new Set()).add(`${name} ${version}: ${copyright}`));
    }
  }
  return [...owners].map(([text, names]) => [...names, text].sort().join("\n")).join("\n\n");
}

const script = await bundle("src/main.ts");
const loader = await bundle("src/loader.ts");
const style = await bundle("src/style.css");
// By a packer that gives the same bytes on every machine.
const packed = Buffer.from(pako.gzip(script, { level: 9, header: { os: 3, time: 0 } }));
const policy = [
  "default-src 'none'",
  `script-src ${hash(loader)} ${hash(script)}`,
  `style-src ${hash(style)}`,
  "base-uri 'none'",
  "form-action 'none'",
  "require-trusted-types-for 'script'",
  "trusted-types clist",
].join("; ");

// Replaced by functions: a "$" in what is put in means nothing.
const page = readFileSync(here("src/page.html"), "utf8")
  .replace("@POLICY@", () => policy)
  .replace("@LICENCES@", licences)
  .replace("@STYLE@", () => style)
  .replace(
    "@SCRIPT@",
    () =>
      `<script type="application/gzip" data-chunk="script">${packed.toString("base64")}</script>`,
  )
  .replace("@LOADER@", () => loader);
if (page.split("@DATA@\n").length !== 2) {
  throw new Error("the page must have one place for its data");
}
mkdirSync(out, { recursive: true });
writeFileSync(`${out}/page.html`, page);
