// Measures pages in Chromium; bench/page.sh runs this.
//
//   node page.mjs LARGE.html SMALL.html DISASSEMBLY.txt INSTRUCTIONS LINES
//
// INSTRUCTIONS and LINES are what objdump tells of the large page's object: its code, and
// its line table.
import { readFileSync } from "node:fs";
import { createRequire } from "node:module";
import { pathToFileURL } from "node:url";
import { gunzipSync } from "node:zlib";

const { chromium } = createRequire(new URL("../page/package.json", import.meta.url))(
  "playwright-core",
);
const [large, small, disassembly, instructions, lines] = process.argv.slice(2);

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
    times.push(await page.evaluate(() => performance.now()));
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

// Does what `act` says and waits until it has been drawn.
const timed = (name, count, act) =>
  page.evaluate(
    async ({ name, count, act }) => {
      const step = new Function("i", act);
      const drawn = () => new Promise((done) => requestAnimationFrame(() => setTimeout(done)));
      const times = [];
      let bad = 0;
      for (let i = 0; i < count; ++i) {
        const started = performance.now();
        const check = step(i);
        await drawn();
        times.push(performance.now() - started);
        if (check && !check()) {
          ++bad;
        }
      }
      return { name, times, bad };
    },
    { name, count, act },
  );

const marks = await timed(
  "mark",
  40,
  `const scroller = document.querySelector("#code .cm-scroller");
   const box = scroller.getBoundingClientRect();
   scroller.querySelector(".cm-content").dispatchEvent(new MouseEvent("mousemove",
     { bubbles: true, clientX: box.left + 200, clientY: box.top + 15 + 18 * i }));`,
);
show("marking the other side: median, most", `${ms(median(marks.times))}, ${ms(most(marks.times))}`, "50 ms");

const places = ["sqlite3Select", "sqlite3.c:90000", "sqlite3VdbeExec+3000", "sqlite3.c:250000", "sqlite3Insert+99"];
const jumps = await timed(
  "jump",
  25,
  `location.hash = ${JSON.stringify(places)}[i % ${places.length}];
   return () => document.querySelector("#source .linked, #code .cm-activeLine") !== null;`,
);
show("jumping: median, most", `${ms(median(jumps.times))}, ${ms(most(jumps.times))}`, "150 ms");

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
  show(`scrolling the ${pane}: a step, blank frames`, `${ms(median(scrolls.times))}, ${scrolls.bad}`, "0 blank");
}
show("heap after all this", `${(await heap(page)).toFixed(0)} MB`, "250 MB");

// The line table: rows by address; of several at one address the last holds.
const table = [];
for (const row of readFileSync(lines, "latin1").split("\n")) {
  const match = /^(\S+)\s+(\d+|-)\s+0x([0-9a-f]+)/.exec(row);
  if (match) {
    table.push({ line: match[2] === "-" ? 0 : Number(match[2]), at: parseInt(match[3], 16) });
  }
}
table.forEach((row, i) => (row.order = i));
table.sort((a, b) => a.at - b.at || a.order - b.order);
function lineAt(at) {
  let low = 0;
  let high = table.length;
  while (low < high) {
    const middle = (low + high) >> 1;
    if (table[middle].at <= at) {
      low = middle + 1;
    } else {
      high = middle;
    }
  }
  return table[low - 1]?.line;
}

// The addresses of each function's instructions, in order.
const functions = new Map();
let current = null;
for (const row of readFileSync(instructions, "latin1").split("\n")) {
  const head = /^[0-9a-f]+ <(.+)>:$/.exec(row);
  const instruction = /^\s+([0-9a-f]+):\t(\S.*)$/.exec(row);
  if (head) {
    functions.set(head[1], (current = []));
  } else if (instruction) {
    current.push(parseInt(instruction[1], 16));
  }
}

// The page's own data, to know which row of a function is its nth instruction.
function chunk(name) {
  const text = readFileSync(large, "latin1");
  const begin = text.indexOf('">', text.indexOf(`data-chunk="${name}"`)) + 2;
  return JSON.parse(gunzipSync(Buffer.from(text.slice(begin, text.indexOf("<", begin)), "base64")));
}
const columns = chunk("0/unit").functions;
const { kinds } = chunk("0/rows");
const instructionRows = new Map(
  columns.symbol.map((symbol, f) => {
    const rows = [];
    for (let row = 0; row < columns.rows[f]; ++row) {
      if (kinds[columns.row[f] + row] === "i") {
        rows.push(row);
      }
    }
    return [symbol, rows];
  }),
);

// The number that the reader sees beside the line that is marked for a row of the code.
// 0: nothing is marked.
function markedLine(address) {
  return page.evaluate(async (hash) => {
    location.hash = hash;
    const drawn = () => new Promise((done) => requestAnimationFrame(() => setTimeout(done)));
    await drawn();
    await drawn();
    const linked = [...document.querySelectorAll("#source .cm-line.linked")];
    if (linked.length !== 1) {
      return 0;
    }
    const { top } = linked[0].getBoundingClientRect();
    const number = [...document.querySelectorAll("#source .cm-lineNumbers .cm-gutterElement")].find(
      (e) => e.offsetHeight > 0 && Math.abs(e.getBoundingClientRect().top - top) < 3,
    );
    return Number(number?.textContent ?? 0);
  }, address);
}

// Numbers that repeat from run to run.
let seed = 12345;
const random = (below) => {
  seed = (Math.imul(seed, 1103515245) + 12345) >>> 0;
  return (seed >>> 8) % below;
};
// Every instruction has the same chance.
const all = [...instructionRows].flatMap(([symbol, rows]) =>
  rows.map((row, n) => ({ symbol, row, n })),
);
const total = Number(process.env.INSTRUCTIONS ?? 1000);
const wrong = [];
for (let i = 0; i < total; ++i) {
  const { symbol, row, n } = all[random(all.length)];
  const marked = await markedLine(`${symbol}+${row}`);
  const line = lineAt(functions.get(symbol)?.[n]);
  if (marked !== line) {
    wrong.push(`${symbol}, instruction ${n}: ${marked}, not ${line}`);
  }
}
show("instructions whose marked line is right", `${total - wrong.length} of ${total}`, "all");
wrong.slice(0, 10).forEach((text) => console.log(`  ${text}`));
await browser.close();
process.exitCode = wrong.length > 0 ? 1 : 0;
