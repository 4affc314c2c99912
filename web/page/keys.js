// Two octaves of keys, for the mouse, for fingers and for the computer's keyboard.

// By the place of the keys on a US keyboard: a row for each octave, both go on to the right.
const rows = [
    ["KeyZ", "KeyS", "KeyX", "KeyD", "KeyC", "KeyV", "KeyG", "KeyB", "KeyH", "KeyN", "KeyJ", "KeyM", "Comma", "KeyL",
        "Period", "Semicolon", "Slash"],
    ["KeyQ", "Digit2", "KeyW", "Digit3", "KeyE", "KeyR", "Digit5", "KeyT", "Digit6", "KeyY", "Digit7", "KeyU", "KeyI",
        "Digit9", "KeyO", "Digit0", "KeyP"],
];
const stepOf = new Map(rows.flatMap((row, octave) => row.map((code, i) => [code, i + 12 * octave])));
const names = ["C", "C sharp", "D", "D sharp", "E", "F", "F sharp", "G", "G sharp", "A", "A sharp", "B"];
const isBlack = step => names[step % 12].includes(" ");
const keyCount = 25; // two octaves, and the C above
const typedVelocity = 100; // a firm stroke, as keyboards send it
const softest = 40;
const loudest = 127;

const letterOf = code => ({ Comma: ",", Period: ".", Semicolon: ";", Slash: "/" })[code] ?? code.replace(/Key|Digit/, "");

export class Keys {
    // `play(note, velocity)` and `end(note)` make the sound.
    constructor(root, { play, end, octaveShown }) {
        Object.assign(this, { root, play, end, octaveShown });
        this.first = 48; // C3, an octave below middle C
        this.isHolding = false;
        this.users = new Map(); // by what holds a key: a pointer, a code; the note
        this.held = new Set();
        this.buttons = Array.from({ length: keyCount }, (_, step) => this.makeKey(step));
        root.append(...this.buttons);
        this.current = this.buttons[0];
        this.current.tabIndex = 0;
        this.listen();
        this.nameKeys();
        this.showLetters();
    }

    makeKey(step) {
        const key = document.createElement("button");
        key.type = "button";
        key.className = isBlack(step) ? "black" : "white";
        key.tabIndex = -1;
        key.dataset.step = step;
        // Of the white keys to the left; a black one stands on the edge of the next.
        key.style.setProperty("--at", Array.from({ length: step }, (_, i) => i).filter(i => !isBlack(i)).length);
        key.append(document.createElement("kbd"));
        return key;
    }

    nameKeys() {
        this.buttons.forEach((key, step) => {
            const note = this.first + step;
            key.setAttribute("aria-label", `${names[note % 12]} ${Math.floor(note / 12) - 1}`);
        });
        this.octaveShown(`C${this.first / 12 - 1}`);
    }

    // The letters of this keyboard, where the browser tells them.
    async showLetters() {
        const layout = await navigator.keyboard?.getLayoutMap?.().catch(() => null);
        for (const [code, step] of stepOf) {
            const key = this.buttons[step];
            const letter = layout?.get(code)?.toUpperCase() ?? letterOf(code);
            if (key && !(step > 11 && step < 17 && code in { Comma: 1, KeyL: 1, Period: 1, Semicolon: 1, Slash: 1 }))
                this.showLetter(key, letter);
        }
    }

    // As an attribute and not as text: speech control expects the text of a button in its name, which
    // is the note.
    showLetter(key, letter) {
        key.firstChild.dataset.letter = letter;
        key.setAttribute("aria-keyshortcuts", letter);
    }

    listen() {
        this.root.addEventListener("pointerdown", event => this.touch(event));
        addEventListener("pointermove", event => this.slide(event));
        for (const type of ["pointerup", "pointercancel"])
            addEventListener(type, event => this.leave(`pointer ${event.pointerId}`));
        this.root.addEventListener("contextmenu", event => event.preventDefault());
        document.addEventListener("keydown", event => this.typed(event));
        document.addEventListener("keyup", event => {
            this.leave(event.code);
            this.leave(`focus ${event.code}`);
        });
        this.root.addEventListener("keydown", event => this.walk(event));
        // Keys that are released elsewhere are not reported.
        addEventListener("blur", () => this.leaveAll());
        document.addEventListener("visibilitychange", () => document.hidden && this.leaveAll());
    }

    keyUnder(event) {
        const key = document.elementFromPoint(event.clientX, event.clientY)?.closest?.(".keys button");
        return key && this.root.contains(key) ? key : null;
    }

    // The nearer to the player, the louder.
    velocityAt(event, key) {
        const area = key.getBoundingClientRect();
        const depth = Math.min(Math.max((event.clientY - area.top) / area.height, 0), 1);
        return Math.round(softest + depth * (loudest - softest));
    }

    touch(event) {
        const key = this.keyUnder(event);
        if (!key || event.button !== 0) return;
        event.preventDefault();
        if (key.hasPointerCapture(event.pointerId)) key.releasePointerCapture(event.pointerId);
        this.focusOn(key);
        this.take(`pointer ${event.pointerId}`, this.noteOf(key), this.velocityAt(event, key));
    }

    slide(event) {
        const user = `pointer ${event.pointerId}`;
        if (!this.users.has(user)) return;
        const key = this.keyUnder(event);
        if (key && this.noteOf(key) === this.users.get(user)) return;
        this.leave(user);
        // Off the keys the note ends; a finger that comes back plays on.
        if (key) this.take(user, this.noteOf(key), this.velocityAt(event, key));
        else this.users.set(user, null);
    }

    noteOf(key) {
        return this.first + Number(key.dataset.step);
    }

    typed(event) {
        if (event.repeat || event.ctrlKey || event.altKey || event.metaKey) return;
        if (event.target.closest?.("input:not([type=range]), dialog")) return;
        const step = stepOf.get(event.code);
        if (step !== undefined) {
            event.preventDefault();
            this.take(event.code, this.first + step, typedVelocity);
        } else if (event.code === "Minus") this.shift(-1);
        else if (event.code === "Equal") this.shift(1);
    }

    // One stop for Tab; the arrows go from key to key, Enter and space play.
    walk(event) {
        const at = this.buttons.indexOf(this.current);
        const to = { ArrowRight: at + 1, ArrowLeft: at - 1, Home: 0, End: keyCount - 1 }[event.key];
        if (to !== undefined) {
            event.preventDefault();
            this.focusOn(this.buttons[Math.min(Math.max(to, 0), keyCount - 1)]);
        } else if (event.key === "Enter" || event.key === " ") {
            event.preventDefault();
            if (!event.repeat) this.take(`focus ${event.code}`, this.noteOf(this.current), typedVelocity);
        }
    }

    focusOn(key) {
        this.current.tabIndex = -1;
        this.current = key;
        key.tabIndex = 0;
        key.focus({ preventScroll: true });
    }

    shift(octaves) {
        const first = this.first + 12 * octaves;
        if (first < 0 || first + keyCount > 128) return;
        this.leaveAll();
        this.first = first;
        this.nameKeys();
        this.showAll();
    }

    take(user, note, velocity) {
        this.leave(user);
        if (note < 0 || note > 127) return;
        const wasHeld = this.held.delete(note);
        this.users.set(user, wasHeld ? null : note);
        if (wasHeld) this.end(note);
        else this.play(note, velocity);
        this.showAll();
    }

    leave(user) {
        if (!this.users.has(user)) return;
        const note = this.users.get(user);
        this.users.delete(user);
        if (note === null || [...this.users.values()].includes(note)) return;
        this.finish(note);
        this.showAll();
    }

    finish(note) {
        if (this.isHolding) this.held.add(note);
        else this.end(note);
    }

    leaveAll() {
        for (const user of [...this.users.keys()]) this.leave(user);
    }

    // Notes stay until their key is pressed again.
    hold(isHolding) {
        this.isHolding = isHolding;
        if (!isHolding) this.drop();
    }

    drop() {
        for (const note of this.held) this.end(note);
        this.held.clear();
        this.showAll();
    }

    // After a panic no key sounds.
    forget() {
        this.users.clear();
        this.held.clear();
        this.showAll();
    }

    showAll() {
        const sounding = new Set([...this.users.values(), ...this.held]);
        for (const key of this.buttons) key.classList.toggle("down", sounding.has(this.noteOf(key)));
    }
}
