// Measures pages in Chromium; bench/page.sh runs this.
//
//   node page.mjs LARGE.html SMALL.html DISASSEMBLY.txt
import { createRequire } from "node:module";
import { pathToFileURL } from "node:url";

const { chromium } = createRequire(new URL("../page/package.json", import.meta.url))(
  "playwright-core",
);
const [large, small, disassembly] = process.argv.slice(2);

const browser = await chromium.launch({
  executablePath: process.env.CHROMIUM ?? "/usr/bin/chromium",
  args: [
    "--no-sandbox",
    "--disable-gpu",
    "--disable-quic",
    "--no-first-run",
    "--disable-background-networking",
    "--disable-component-update",
    "--disable-sync",
  ],
});

const median = (values) => values.slice().sort((a, b) => a - b)[values.length >> 1];
const most = (values) => Math.max(...values);
const ms = (value) => `${value.toFixed(0)} ms`;
const show = (what, value, aim = "") =>
  console.log(`${what.padEnd(44)} ${value}${aim && `   (aim: ${aim})`}`);

// A new page each time, so that nothing is kept from the one before.
async function open(file, ready) {
  const context = await browser.newContext({ viewport: { width: 1400, height: 860 } });
  const page = await context.newPage();
  // The moment itself, without the way of its news to here.
  await page.addInitScript(() => {
    const note = () => {
      if (document.documentElement?.dataset.ready) {
        window.usableAfter ??= performance.now();
      }
    };
    new MutationObserver(note).observe(document, { attributes: true, subtree: true });
  });
  await page.goto(pathToFileURL(file).href, { waitUntil: "commit" });
  await ready(page);
  return { context, page };
}

const usable = (page) =>
  page.locator('html[data-ready="true"]').waitFor({ state: "attached", timeout: 60_000 });

// From the beginning of the navigation, by the page's own clock.
async function opening(file, ready, runs) {
  const times = [];
  for (let i = 0; i < runs; ++i) {
    const { context, page } = await open(file, ready);
    times.push(await page.evaluate(() => window.usableAfter ?? performance.now()));
    await context.close();
  }
  return Math.min(...times);
}

async function heap(page) {
  const session = await page.context().newCDPSession(page);
  await session.send("HeapProfiler.collectGarbage");
  return (await session.send("Runtime.getHeapUsage")).usedSize / 1e6;
}

show("large page: usable after", ms(await opening(large, usable, 3)), "2,500 ms");
show("small page: usable after", ms(await opening(small, usable, 5)), "300 ms");
const shown = (page) => page.waitForLoadState("load", { timeout: 300_000 });
show("objdump -dS as text: loaded after", ms(await opening(disassembly, shown, 1)));

const { page } = await open(large, usable);
show("large page: heap", `${(await heap(page)).toFixed(0)} MB`, "250 MB");

// Does what `act` says and waits until it has been drawn: for one frame, or for so many
// milliseconds at most until the check that it gives says so.
const timed = (name, count, act, patience = 0) =>
  page.evaluate(
    async ({ name, count, act, patience }) => {
      const step = new Function("i", act);
      const drawn = () => new Promise((done) => requestAnimationFrame(() => setTimeout(done)));
      const times = [];
      let bad = 0;
      for (let i = 0; i < count; ++i) {
        const started = performance.now();
        const check = step(i);
        do {
          await drawn();
        } while (performance.now() - started < patience && !check());
        times.push(performance.now() - started);
        if (check && !check()) {
          ++bad;
        }
      }
      return { name, times, bad };
    },
    { name, count, act, patience },
  );

// Each row on the screen in turn; an instruction that is pointed at must be marked itself.
const marks = await timed(
  "mark",
  40,
  `const scroller = document.querySelector("#code .cm-scroller");
   const box = scroller.getBoundingClientRect();
   const [x, y] = [box.left + 200, box.top + 15 + 18 * i];
   const row = () => document.elementFromPoint(x, y)?.closest(".cm-line");
   const isInstruction = row()?.textContent.startsWith("\\t");
   scroller.querySelector(".cm-content").dispatchEvent(new MouseEvent("mousemove",
     { bubbles: true, clientX: x, clientY: y }));
   return () => !isInstruction || row().classList.contains("linked");`,
  1000,
);
show(
  "marking the other side: median, most, missed",
  `${ms(median(marks.times))}, ${ms(most(marks.times))}, ${marks.bad}`,
  "50 ms, 0 missed",
);

// Where each leads, and what says so.
const name = "#code .pane-head .name";
const number = "#source .cm-lineNumbers .cm-activeLineGutter";
const places = [
  ["sqlite3Select", name, "sqlite3Select"],
  ["sqlite3.c:90000", number, "90000"],
  ["sqlite3VdbeExec+3000", name, "sqlite3VdbeExec"],
  ["sqlite3.c:250000", number, "250000"],
  ["sqlite3Insert+99", name, "sqlite3Insert"],
];
const jumps = await timed(
  "jump",
  25,
  `const [hash, selector, text] = ${JSON.stringify(places)}[i % ${places.length}];
   location.hash = hash;
   return () => document.querySelector(selector)?.textContent === text;`,
  1000,
);
show(
  "jumping: median, most, missed",
  `${ms(median(jumps.times))}, ${ms(most(jumps.times))}, ${jumps.bad}`,
  "150 ms, 0 missed",
);

let missed = marks.bad + jumps.bad;
for (const pane of ["source", "code"]) {
  const scrolls = await timed(
    "scroll",
    150,
    `const scroller = document.querySelector("#${pane} .cm-scroller");
     scroller.scrollTop += 400;
     return () => {
       const box = scroller.getBoundingClientRect();
       const all = [...scroller.querySelectorAll(".cm-line")].map((l) => l.getBoundingClientRect());
       return all[0].top <= box.top + 6 && all.at(-1).bottom >= box.bottom - 20;
     };`,
  );
  missed += scrolls.bad;
  show(`scrolling the ${pane}: a step, blank frames`, `${ms(median(scrolls.times))}, ${scrolls.bad}`, "0 blank");
}
show("heap after all this", `${(await heap(page)).toFixed(0)} MB`, "250 MB");
await browser.close();
process.exitCode = missed === 0 ? 0 : 1;
