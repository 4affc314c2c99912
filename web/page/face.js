// The editor's face: its panels, cut out of the background picture, with the knobs in them. A wide
// window shows them as the editor does, a narrow one one below the other.

import { Help } from "./help.js";
import { Knob } from "./knob.js";

const hintOf = (knob, text) => {
    const name = document.createElement("b");
    name.textContent = knob.name;
    const range = document.createElement("i");
    range.textContent = text.range;
    return [name, range, document.createTextNode(text.text)];
};

// Puts an element where the editor has one: [left, top, width, height].
function place(element, [left, top, width, height], panel) {
    const style = { "--x": left - panel[0], "--y": top - panel[1], "--w": width, "--h": height };
    for (const [name, value] of Object.entries(style)) element.style.setProperty(name, value);
    return element;
}

const holds = (area, [left, top]) =>
    area[0] <= left && left < area[0] + area[2] && area[1] <= top && top < area[1] + area[3];

function textAt(name, area, panel) {
    const text = place(document.createElement("span"), area, panel);
    text.className = "label";
    text.textContent = name;
    text.setAttribute("aria-hidden", "true");
    return text;
}

export class Face {
    // `layout` is face.json, `pages` help.json, `parameters` the synth's. `changed(index, value)` and
    // `done()` tell of the user's turns.
    constructor(root, { layout, pages, parameters, display, changed, done, hint }) {
        Object.assign(this, { root, layout, parameters, display, changed, done });
        this.knobs = new Map();
        this.texts = new Map(pages.flatMap(page => page.knobs).map(text => [text.name, text]));
        this.hint = hint;
        layout.panels.forEach((area, index) => root.append(this.panel(area, pages[index])));
        this.help = new Help(root, layout, pages);
    }

    panel(area, page) {
        const panel = place(document.createElement("section"), area, [0, 0]);
        panel.className = "panel";
        panel.setAttribute("role", "group");
        panel.setAttribute("aria-label", page.title);
        const sheet = document.createElement("div");
        sheet.className = "sheet";
        const [left, top, width, height] = area;
        for (const [name, value] of Object.entries({ left, top, panel: width, tall: height }))
            sheet.style.setProperty(`--${name}`, value);
        panel.append(sheet);
        const inside = this.layout.controls.filter(control => holds(area, control.slice(2)));
        // A text may begin beyond its panel's edge: it belongs to where its knob is.
        for (const [, index, ...knobArea] of inside.filter(([kind]) => kind === "CKnob")) {
            const areaOf = kind => this.layout.controls.find(c => c[0] === kind && c[1] === index).slice(2);
            const knob = this.knob(index);
            sheet.append(textAt(knob.name, areaOf("CTextLabel"), area), place(knob.element, knobArea, area),
                place(knob.display, areaOf("ParamDisplay"), area));
        }
        return panel;
    }

    knob(index) {
        const knob = new Knob(this.parameters[index].name, {
            texts: value => this.display(index, value),
            changed: value => this.changed(index, value),
            done: this.done,
            scale: () => knob.element.offsetWidth / parseFloat(knob.element.style.getPropertyValue("--w")),
        });
        for (const type of ["focus", "pointerenter"])
            knob.element.addEventListener(type, () => this.explain(knob));
        this.knobs.set(index, knob);
        return knob;
    }

    explain(knob) {
        const text = this.texts.get(knob.name);
        if (text) this.hint.replaceChildren(...hintOf(knob, text));
    }

    show(index, value) {
        this.knobs.get(index)?.show(value);
    }
}
