// The editor's style sheets, given to the document as objects. The page's security
// policy lets no style element in but the page's own, and the editor would add some.

import { StyleModule } from "style-mod";

const mounted: StyleModule[] = [];
const sheet = new CSSStyleSheet();

StyleModule.mount = (_root, modules: StyleModule | readonly StyleModule[]): void => {
    const added = [modules].flat().filter((module) => !mounted.includes(module));
    if (added.length > 0) {
        mounted.push(...added);
        const rules = mounted.map((module) => module.getRules()).join("\n");
        // In a layer, so that the page's own rules hold wherever the two differ.
        sheet.replaceSync(`@layer editor {\n${rules}\n}`);
    }
};

document.adoptedStyleSheets = [sheet];
