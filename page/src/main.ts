// Starts the page: reads the data, joins the panes with the views around them, the keys
// and the address, and says when it can be used.

import "./style_sheets.ts";
import { addressOfLine, addressOfRow, addressText, setAddress, targetOf } from "./address.ts";
import type { CodeFunction, InlinedFunction, Project, SourceFile } from "./data/project.ts";
import { loadProject } from "./data/project.ts";
import { count, h, percent, visible } from "./dom.ts";
import { type Actions, startKeys } from "./keys.ts";
import type { Pane } from "./panes/pane.ts";
import { findNext, findPrevious, openSearchPanel } from "./panes/find.ts";
import { Reader } from "./reader.ts";
import { startDivider } from "./views/divider.ts";
import { FileList } from "./views/file_list.ts";
import { nameLine } from "./views/function_name.ts";
import { openFindEverywhere } from "./views/find_everywhere.ts";
import { openFileJump, openFunctionJump } from "./views/function_jump.ts";
import { openHelp } from "./views/help.ts";
import { commandLine, madeAt, Overview } from "./views/overview.ts";
import { preparePrint, startPrint } from "./views/print.ts";
import { Status } from "./views/status.ts";
import { currentTheme, startTheme, toggleTheme } from "./views/theme.ts";
import { startTips } from "./views/tip.ts";

function element(selector: string): HTMLElement {
    return document.querySelector<HTMLElement>(selector)!;
}

// Where the list of files has no room beside the panes.
const narrow = matchMedia("(max-width: 1000px)");

// Moves are written to the address once they pause.
const addressPause = 150;

async function start(): Promise<void> {
    const project = await loadProject();
    const readerElement = element("#reader");
    const overviewElement = element("#overview");
    const onlyOverview = project.heads.every((_, unit) => project.pageOf(unit) !== null);
    let lastPane: Pane | null = null;
    let addressTimer = 0;

    // The head of the page.
    const title = project.start?.title ?? titleOf(project);
    document.title = `${visible(title)} \u2013 clist`;
    element("#title").append(h("bdi", null, visible(title)));
    const head = project.heads[0];
    const made =
        project.heads.length === 1 && head.command.length > 0
            ? commandLine(head.command)
            : project.heads.length > 1
              ? `${count(project.heads.length, "unit")}, ${head.program}, ${madeAt(head.made)}`
              : `${head.program}, ${madeAt(head.made)}`;
    element("#made").append(visible(made));
    element("#made").dataset["tip"] = project.heads.length > 1 ? made : madeTip(project);

    const isOverview = (): boolean => !overviewElement.hidden;
    const show = (view: "overview" | "reader"): void => {
        overviewElement.hidden = view !== "overview";
        readerElement.hidden = view !== "reader";
        document.documentElement.dataset["view"] = view;
        overviewButton.setAttribute("aria-pressed", String(view === "overview"));
        if (view === "overview") {
            overview.show();
        }
    };
    // Where a place is shown that only another page has; null for one of this page.
    const pageOfLine = (
        file: SourceFile,
        line: number,
        unit = file.unitOf(line),
    ): string | null => {
        const page = project.pageOf(unit);
        return page === null ? null : encodeURI(page) + addressOfLine(project, file, line);
    };
    const pageOfRow = (f: CodeFunction, row: number): string | null => {
        const page = project.pageOf(f.unit);
        const nth = row > 0 ? `+${row}` : "";
        return page === null ? null : `${encodeURI(page)}#${encodeURIComponent(f.symbol)}${nth}`;
    };
    const openFunction = (f: CodeFunction): void => {
        const away = pageOfRow(f, 0);
        if (away !== null) {
            location.href = away;
            return;
        }
        show("reader");
        void reader.showFunction(f).then(() => reader.code.focus());
    };
    const pageOfInlined = (f: InlinedFunction): string | null => {
        const page = project.pageOf(f.units[0]);
        return page === null ? null : `${encodeURI(page)}#${encodeURIComponent(f.name)}`;
    };
    const openInlined = (f: InlinedFunction): void => {
        const away = pageOfInlined(f);
        if (away !== null) {
            location.href = away;
            return;
        }
        show("reader");
        void reader.showInlined(f).then(() => reader.source.focus());
    };
    const openLine = (file: SourceFile, line: number): void => {
        const away = pageOfLine(file, line);
        if (away !== null) {
            location.href = away;
            return;
        }
        show("reader");
        void reader.showLine(file, line).then(() => reader.source.focus());
    };

    const overview = new Overview(overviewElement, project, openFunction);
    const files = new FileList(element("#files"), project, (file) => {
        if (narrow.matches) {
            toggleFiles(); // it covers the panes
        }
        void reader.showLine(file, firstLine(file)).then(() => reader.source.focus());
    });
    const status = new Status(element("#status"), project, {
        walk: (step) => void reader.walk(step),
        line: openLine,
    });
    const sourceHead = element("#source .pane-head");
    const codeHead = element("#code .pane-head");
    const unitChoice = project.heads.length > 1 ? unitSelect(project) : null;
    unitChoice?.addEventListener("change", () => void reader.showUnit(Number(unitChoice.value)));

    const reader = new Reader(project, element("#source"), element("#code"), {
        linked(link, place) {
            status.show(link, place);
            files.setLinked(link?.origin === "code" ? link.file : null);
        },
        shown(file, unit, top) {
            files.setCurrent(file);
            sourceHead.replaceChildren(...(file ? describeFile(file) : []));
            if (unitChoice) {
                unitChoice.value = String(unit);
            }
            codeHead.replaceChildren(
                ...(unitChoice ? [unitChoice] : []),
                ...(top ? describeFunction(top) : [h("span", { class: "muted" }, "no function")]),
            );
        },
        moved(place, far) {
            clearTimeout(addressTimer);
            const write = (): void => {
                const f = place.side === "code" ? reader.functionAt(place.unit, place.row) : null;
                if (place.side === "source") {
                    const unit = reader.code.unit?.number;
                    setAddress(addressOfLine(project, place.file, place.line, unit), far);
                } else if (f) {
                    setAddress(addressOfRow(project, f, place.row), far);
                }
            };
            if (far) {
                write();
            } else {
                addressTimer = window.setTimeout(write, addressPause);
            }
            const { unit } = reader.code;
            const f = reader.currentFunction;
            if (unit && f) {
                void preparePrint(project, unit, f);
            }
        },
    });
    reader.source.element.addEventListener("focusin", () => (lastPane = reader.source));
    reader.code.element.addEventListener("focusin", () => (lastPane = reader.code));
    startDivider(element("#divider"), readerElement);

    const goToAddress = async (): Promise<boolean> => {
        const target = targetOf(project, location.hash);
        const away =
            target === null || target === "overview"
                ? null
                : "file" in target
                  ? pageOfLine(target.file, target.line, target.unit)
                  : "inlined" in target
                    ? pageOfInlined(target.inlined)
                    : pageOfRow(target.function, target.row);
        if (away !== null) {
            location.replace(away); // Back shall not lead here and on again
        } else if (target === "overview") {
            show("overview");
        } else if (target && "file" in target) {
            show("reader");
            await reader.showLine(target.file, target.line, false, target.unit);
        } else if (target && "inlined" in target) {
            show("reader");
            await reader.showInlined(target.inlined, false);
        } else if (target) {
            show("reader");
            await reader.showRow(target.function.unit, target.function.row + target.row, false);
        }
        return target !== null;
    };

    const tellUnknown = (): void => {
        if (location.hash.length > 1) {
            status.tell(`Nothing here is called ${visible(addressText(location.hash))}.`);
        }
    };

    const pane = (): Pane => lastPane ?? reader.source;
    const inPane = (action: (pane: Pane) => void) => (): void => {
        if (!isOverview()) {
            action(pane());
        }
    };
    const toggleOverview = (): void => {
        if (onlyOverview) {
            return;
        }
        show(isOverview() ? "reader" : "overview");
        setAddress(isOverview() ? "#overview" : "#", true);
        if (!isOverview() && !reader.code.unit) {
            void showFirst(project, reader);
        }
    };
    const filesShown = (): boolean => getComputedStyle(element("#files")).display !== "none";
    const toggleFiles = (): void => {
        const shown = filesShown();
        document.documentElement.dataset["files"] = shown ? "hidden" : "shown";
        filesButton.setAttribute("aria-pressed", String(!shown));
    };
    const toggleAll = (): void => {
        if (isOverview()) {
            return;
        }
        const all = !reader.code.all;
        allButton.setAttribute("aria-pressed", String(all));
        void reader.showAll(all);
    };
    const jump = (): void => openFunctionJump(project, openFunction, openInlined);
    const everywhere = (): void => {
        const { state } = pane().view;
        const { from, to } = state.selection.main;
        const selected = state.sliceDoc(from, Math.min(to, from + 200)).split("\n")[0];
        openFindEverywhere(project, reader.source.file, selected, {
            line: openLine,
            row: (unit, row) => {
                show("reader");
                void reader.showRow(unit, row).then(() => reader.code.focus());
            },
        });
    };

    const actions: Actions = {
        nextPlace: inPane(() => void reader.walk(1)),
        previousPlace: inPane(() => void reader.walk(-1)),
        callSite: inPane(() => void reader.goToCallSite()),
        source: inPane(() => reader.source.focus()),
        code: inPane(() => reader.code.focus()),
        nextFunction: inPane(() => void reader.walkFunctions(1)),
        previousFunction: inPane(() => void reader.walkFunctions(-1)),
        function: jump,
        file: () => openFileJump(project, (file) => openLine(file, firstLine(file))),
        find: inPane((at) => openSearchPanel(at.view)),
        nextMatch: inPane((at) => findNext(at.view)),
        previousMatch: inPane((at) => findPrevious(at.view)),
        everywhere: onlyOverview ? jump : everywhere,
        overview: toggleOverview,
        all: toggleAll,
        files: inPane(toggleFiles),
        theme: toggleTheme,
        print: () => print(),
        help: openHelp,
    };

    const button = (label: string, key: string, sign: string, run: () => void): HTMLElement =>
        h(
            "button",
            { type: "button", "aria-label": label, "data-tip": `${label} (${key})`, click: run },
            h("span", { class: "sign", "data-sign": sign }),
            h("span", { class: "word" }, label),
        );
    const switchButton = (...args: Parameters<typeof button>): HTMLElement => {
        const made = button(...args);
        made.setAttribute("aria-pressed", "false");
        return made;
    };
    const inReader = (made: HTMLElement): HTMLElement => {
        made.classList.add("reader-only");
        return made;
    };
    const overviewButton = switchButton("Overview", "o", "\u25a6", toggleOverview);
    const filesButton = inReader(switchButton("Files", "b", "\u2630", toggleFiles));
    const allButton = inReader(switchButton("All assembly", "a", "\u2261", toggleAll));
    const findButton = button(
        "Find",
        "/",
        "\u2315",
        inPane((at) => openSearchPanel(at.view)),
    );
    element(".actions").append(
        overviewButton,
        filesButton,
        button("Function", "f", "\u0192", jump),
        inReader(findButton),
        allButton,
        button("Theme", "t", "\u25d0", toggleTheme),
        button("Keys", "?", "?", openHelp),
    );

    startTips();
    startTheme(() => {
        document.documentElement.style.colorScheme = currentTheme();
        reader.source.strip.draw();
        reader.code.strip.draw();
        if (isOverview()) {
            overview.show();
        }
    });
    startKeys(actions);
    // Where the list of files covers the panes it is closed as a dialog is.
    document.addEventListener("keydown", (event) => {
        const open = narrow.matches && !isOverview() && filesShown();
        if (event.key === "Escape" && open && !document.querySelector("dialog[open]")) {
            toggleFiles();
            pane().focus();
        }
    });
    startPrint(project, () => {
        const { unit } = reader.code;
        const f = isOverview() ? null : reader.currentFunction;
        return unit && f ? { unit, function: f } : null;
    });

    element("#loading").remove();
    element("header.masthead").hidden = false;
    if (!(await goToAddress())) {
        if (project.heads.length > 1) {
            show("overview");
        } else {
            show("reader");
            await showFirst(project, reader);
        }
        tellUnknown();
    }
    addEventListener("popstate", () => {
        if (location.hash) {
            void goToAddress().then((found) => found || tellUnknown());
        } else if (project.heads.length > 1) {
            show("overview");
        } else {
            show("reader");
        }
    });
    filesButton.setAttribute("aria-pressed", String(filesShown()));
    // The keys move in the text at once.
    if (!isOverview()) {
        pane().focus();
    }
    document.documentElement.dataset["ready"] = "true";
}

function titleOf(project: Project): string {
    const names = project.heads.map((head) => head.name);
    return names.length === 1 ? names[0] : `${names[0]} and ${names.length - 1} more`;
}

function madeTip(project: Project): string {
    const head = project.heads[0];
    return [
        commandLine(head.command),
        head.compiler,
        head.target,
        `${head.program}, ${madeAt(head.made)}`,
    ]
        .filter(Boolean)
        .map(visible)
        .join("\n");
}

function firstLine(file: SourceFile): number {
    return Math.max(
        1,
        file.heatByLine().findIndex((instructions) => instructions > 0),
    );
}

async function showFirst(project: Project, reader: Reader): Promise<void> {
    // The project's own code before that of the system.
    const own = project.files.find((file) => !file.system && file.instructions > 0);
    const first = project.functions.find((f) => f.file === own) ?? project.functions[0];
    if (first) {
        await reader.showFirst(first);
    } else {
        await reader.showUnit(0);
    }
}

function unitSelect(project: Project): HTMLSelectElement {
    return h(
        "select",
        { "aria-label": "Unit" },
        ...project.unitLabels.map((label, i) => h("option", { value: i }, visible(label))),
    );
}

function describeFile(file: SourceFile): (Node | string)[] {
    return [
        h("bdi", { class: "name", "data-tip": visible(file.path) }, visible(file.name)),
        h("span", { class: "muted" }, count(file.instructions, "instruction") + file.ofAll),
        file.missing ? h("span", { class: "warning" }, "source not found") : "",
    ];
}

function describeFunction(f: CodeFunction): Node[] {
    return [
        h("span", { class: "name" }, nameLine(f.name)),
        h(
            "span",
            { class: "muted" },
            `${count(f.instructions, "instruction")}, ${percent(f.inlined, f.instructions)} inlined`,
        ),
    ];
}

start().catch((error: unknown) => {
    element("#loading").textContent = `The page cannot be shown: ${String(error)}`;
    throw error;
});
