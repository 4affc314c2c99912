// One knob: a slider for the keyboard and for assistive technology, a picture of the strip for the eye.

import { Drag, middle, pictureOf, wheelStep } from "./turning.js";

const wheelPause = 500; // ms; notches further apart are gestures of their own
const wheelNotch = 100; // of deltaY, in pixels, as browsers report one notch
const steps = { PageUp: 0.1, PageDown: -0.1 };
const arrows = { ArrowUp: 1, ArrowRight: 1, ArrowDown: -1, ArrowLeft: -1 };

// `texts(value)` gives what is displayed. `changed(value)` is called at each move, `done()` at the
// end of each gesture, `scale()` gives the screen's pixels for one of the editor's.
export class Knob {
    constructor(name, { texts, changed, done, scale }) {
        Object.assign(this, { name, texts, changed, done, scale });
        this.value = 0;
        this.element = document.createElement("div");
        this.element.className = "knob";
        this.element.tabIndex = 0;
        for (const [key, value] of Object.entries({ role: "slider", "aria-label": name, "aria-valuemin": 0,
            "aria-valuemax": 100, "aria-orientation": "vertical" })) this.element.setAttribute(key, value);
        this.display = document.createElement("span");
        this.display.className = "display";
        this.display.setAttribute("aria-hidden", "true");
        this.listen();
    }

    // Shows a value that came from elsewhere.
    show(value) {
        this.value = value;
        const text = this.texts(value).trim();
        this.element.style.setProperty("--picture", pictureOf(value));
        this.element.setAttribute("aria-valuenow", Math.round(value * 100));
        this.element.setAttribute("aria-valuetext", text);
        this.display.textContent = text;
    }

    turn(value) {
        const wanted = Math.fround(value);
        if (wanted === this.value) return;
        this.show(wanted);
        this.changed(wanted);
    }

    listen() {
        const knob = this.element;
        knob.addEventListener("pointerdown", event => this.press(event));
        knob.addEventListener("pointermove", event => {
            if (this.drag && event.pointerId === this.pointer) this.turn(this.drag.to(this.placeOf(event), event));
        });
        for (const type of ["pointerup", "lostpointercapture"]) knob.addEventListener(type, () => this.release());
        knob.addEventListener("pointercancel", () => {
            // Around the knob the value is where the pointer was, and stays.
            if (this.drag && !this.drag.isCircular) this.turn(this.drag.before);
            this.release();
        });
        knob.addEventListener("wheel", event => this.wheel(event), { passive: false });
        knob.addEventListener("keydown", event => this.key(event));
        knob.addEventListener("contextmenu", event => {
            if (event.ctrlKey) event.preventDefault(); // Ctrl+click, where that opens a menu
        });
    }

    placeOf(event) {
        const area = this.element.getBoundingClientRect();
        const scale = this.scale();
        return {
            x: (event.clientX - area.left - area.width / 2) / scale,
            y: (event.clientY - area.top - area.height / 2) / scale,
        };
    }

    press(event) {
        if (event.button !== 0 || this.drag) return;
        event.preventDefault();
        this.element.focus({ preventScroll: true });
        this.endWheel();
        if (event.ctrlKey && !event.shiftKey && !event.altKey) {
            this.turn(middle);
            this.done();
            return;
        }
        this.pointer = event.pointerId;
        this.element.setPointerCapture(event.pointerId);
        this.drag = new Drag(this.value, this.placeOf(event), event);
    }

    release() {
        if (!this.drag) return;
        this.drag = null;
        this.done();
    }

    wheel(event) {
        event.preventDefault(); // the page stays where it is
        // Some systems turn a wheel with Shift sideways.
        const delta = event.deltaY || (event.shiftKey ? event.deltaX : 0);
        const notches = event.deltaMode === 0 ? delta / wheelNotch : Math.sign(delta);
        if (notches === 0) return;
        this.turn(wheelStep(this.value, -notches, event.shiftKey));
        clearTimeout(this.wheelEnd);
        this.wheelEnd = setTimeout(() => this.endWheel(), wheelPause);
    }

    endWheel() {
        if (!this.wheelEnd) return;
        clearTimeout(this.wheelEnd);
        this.wheelEnd = 0;
        this.done();
    }

    key(event) {
        if (event.ctrlKey || event.altKey || event.metaKey) return;
        const wanted = this.wantedByKey(event);
        if (wanted === undefined) return;
        event.preventDefault();
        this.turn(Math.min(Math.max(wanted, 0), 1));
        this.done();
    }

    wantedByKey(event) {
        if (event.key in arrows) return this.nextValue(arrows[event.key], event.shiftKey);
        if (event.key in steps) return this.value + steps[event.key];
        return { Home: 0, End: 1, Delete: middle }[event.key];
    }

    // A hundredth further, or as many as it takes until another text is shown: of a whole number
    // every press of a key is a step. With Shift a thousandth.
    nextValue(direction, isFine) {
        if (isFine) return this.value + direction * 0.001;
        const before = this.texts(this.value);
        let value = this.value;
        do value += direction * 0.01;
        while (value > 0 && value < 1 && this.texts(value) === before);
        return value;
    }
}
