// Builds the page around the synth. The page is there before the sound: browsers let sound begin at
// the first click or key only.

import { Comparison } from "./same.js";
import { Face } from "./face.js";
import { History } from "./history.js";
import { Keys } from "./keys.js";
import { Programs } from "./programs.js";
import { Scopes } from "./scopes.js";
import { copy, download, readAddress, renderCommand, writeAddress } from "./sharing.js";
import { connectMidi, hasMidi } from "./midi.js";
import { mixed } from "./mixing.js";

const usualTempo = 120;
const quietest = -60; // dB, the meter's lower end
const loudestShown = 6; // dB, the upper one
const addressPause = 300; // ms
const silence = 1e-5; // of full scale
const byId = id => document.getElementById(id);

const getJson = async name => {
    const response = await fetch(name);
    if (!response.ok) throw new Error(`${name}: ${response.status}`);
    return response.json();
};

function say(text) {
    byId("said").textContent = text;
}

class Page {
    constructor({ context, synth, engine, layout, help, site }) {
        Object.assign(this, { context, synth, site });
        this.volume = new GainNode(context, { gain: 0.5 });
        synth.node.connect(this.volume).connect(context.destination);
        this.scopes = new Scopes(context, synth.node);
        this.face = new Face(byId("face"), {
            layout,
            pages: help,
            parameters: synth.parameters,
            display: (index, value) => synth.display(index, value),
            changed: (index, value) => {
                synth.setParameter(index, value);
                this.showTitle();
            },
            done: () => this.keep(),
            hint: byId("hint"),
        });
        this.programs = new Programs({ programs: synth.programs, site, chosen: index => this.choose(index) });
        this.keys = new Keys(byId("keys"), {
            play: (note, velocity) => {
                this.start();
                synth.noteOn(note, velocity);
            },
            end: note => synth.noteOff(note),
            octaveShown: text => { byId("octave").value = text; },
        });
        this.comparison = new Comparison(synth.programs, engine.hashPhrase);
        this.takeAddress();
        this.history = new History(synth.state());
        this.show();
        this.listen();
    }

    // Harmless while it sounds. Not every touch is one with which sound may begin.
    start() {
        if (this.context.state !== "running" && navigator.userActivation?.isActive !== false) this.context.resume();
    }

    choose(index) {
        this.synth.setProgram(index);
        this.keep();
        this.show();
    }

    // The sound as it is now: one step of undo, and in the address.
    keep() {
        this.history.add(this.synth.state());
        this.writeAddress();
        this.showTitle();
        this.showUndo();
    }

    // A moment later: browsers refuse too many changes within a short time.
    writeAddress() {
        clearTimeout(this.addressTimer);
        this.addressTimer = setTimeout(() => history.replaceState(null, "", this.address()), addressPause);
    }

    move(by) {
        if (!this.history.canMove(by)) return;
        this.synth.setState(this.history.move(by));
        this.writeAddress();
        this.show();
    }

    settings() {
        const values = this.synth.programs[this.synth.program].values;
        return this.synth.parameters
            .map(({ index, name }) => [name, this.synth.parameter(index), values[index]])
            .filter(([, value, usual]) => Math.fround(value) !== Math.fround(usual));
    }

    isEdited() {
        return this.settings().length > 0;
    }

    address() {
        return writeAddress({
            program: this.synth.program,
            state: this.isEdited() ? this.synth.state() : undefined, // has the tempo too
            tempo: this.synth.tempo === usualTempo ? undefined : this.synth.tempo,
        });
    }

    takeAddress(hash = location.hash) {
        const { program, state, tempo } = readAddress(hash);
        try {
            if (state !== undefined) this.synth.setState(state);
            else if (program !== undefined && program < this.synth.programs.length) this.synth.setProgram(program);
        } catch {
            say("This link holds no sound that this page knows.");
        }
        if (tempo !== undefined) this.setTempo(tempo);
    }

    setTempo(wanted) {
        const field = byId("tempo");
        this.synth.setTempo(Math.min(Math.max(wanted || usualTempo, field.min), field.max));
        this.showTempo();
    }

    showTempo() {
        byId("tempo").value = Number(this.synth.tempo.toFixed(2));
    }

    show() {
        this.showTempo();
        for (const { index } of this.synth.parameters) this.face.show(index, this.synth.parameter(index));
        this.programs.show(this.synth.program);
        this.showTitle();
        this.showUndo();
        const { description, card } = this.site.programs[this.synth.program] ?? {};
        byId("about").textContent = description ?? "";
        byId("card").hidden = !card;
        if (card) byId("card").href = `tour/index.html#${card}`;
    }

    showTitle() {
        const title = byId("program-name");
        title.querySelector(".number").textContent = this.synth.program;
        title.querySelector(".name").textContent = this.synth.programName;
        title.classList.toggle("edited", this.isEdited());
    }

    showUndo() {
        byId("undo").disabled = !this.history.canMove(-1);
        byId("redo").disabled = !this.history.canMove(1);
    }

    listen() {
        this.listenToTools();
        this.listenToSharing();
        for (const type of ["pointerdown", "pointerup", "keydown"]) addEventListener(type, () => this.start(), true);
        this.context.addEventListener("statechange", () => this.showStatus());
        this.synth.onstatus = status => {
            this.status = status;
            this.showStatus();
        };
        document.addEventListener("keydown", event => this.shortcut(event));
        addEventListener("hashchange", () => {
            this.takeAddress();
            this.history.add(this.synth.state());
            this.show();
        });
    }

    listenToTools() {
        const actions = {
            previous: () => this.choose(this.programs.neighbour(this.synth.program, -1)),
            next: () => this.choose(this.programs.neighbour(this.synth.program, 1)),
            undo: () => this.move(-1),
            redo: () => this.move(1),
            random: () => this.mix(),
            lower: () => this.keys.shift(-1),
            upper: () => this.keys.shift(1),
            hold: () => this.toggleHold(),
            panic: () => this.panic(),
            phrase: () => this.playPhrase(),
            midi: () => this.useMidi(),
        };
        for (const [id, act] of Object.entries(actions)) byId(id).addEventListener("click", act);
        byId("tempo").addEventListener("change", event => {
            this.setTempo(Number(event.target.value));
            this.keep();
        });
        // By the ear: half of the way is a fourth of the power.
        byId("volume").addEventListener("input", event => { this.volume.gain.value = event.target.value ** 2 * 2; });
        byId("midi").hidden = !hasMidi();
        byId("phrase").hidden = !this.synth.phrase;
    }

    listenToSharing() {
        byId("link").addEventListener("click", () =>
            this.copied(`${location.href.replace(/#.*/, "")}${this.address()}`, "The link is copied."));
        byId("command").addEventListener("click", () => {
            const { index, name } = this.synth.programs[this.synth.program];
            this.copied(renderCommand(index, name, this.settings()), "The command is copied.");
        });
        byId("save").addEventListener("click", () => {
            download(this.synth.save(), `${this.synth.programName.replace(/[^\w]+/g, "-")}.fxp`);
            say("Saved. The plug-in and zelvatone open it.");
        });
        byId("open").addEventListener("change", async event => {
            const [file] = event.target.files;
            if (file) this.load(file.name, new Uint8Array(await file.arrayBuffer()));
            event.target.value = "";
        });
    }

    load(name, bytes) {
        try {
            this.synth.load(bytes);
            say(`${name} is open.`);
        } catch (error) {
            say(`${name} was not opened: ${error.message}`);
        }
        this.keep();
        this.show();
    }

    async copied(text, done) {
        say((await copy(text)) ? done : `The browser does not let this page copy. ${text}`);
    }

    mix() {
        const values = mixed(this.synth.programs.map(program => program.values));
        this.synth.parameters.forEach(({ index }) => this.synth.setParameter(index, values[index]));
        this.keep();
        this.show();
    }

    toggleHold() {
        const isHolding = byId("hold").getAttribute("aria-pressed") !== "true";
        byId("hold").setAttribute("aria-pressed", isHolding);
        this.keys.hold(isHolding);
    }

    panic() {
        this.synth.panic();
        this.keys.forget();
        for (const timer of this.timers ?? []) clearTimeout(timer);
    }

    playPhrase() {
        this.start();
        this.timers = this.synth.phrase.map(({ seconds, bytes }) =>
            setTimeout(() => this.synth.midi(...bytes), seconds * 1000));
    }

    async useMidi() {
        try {
            await connectMidi(bytes => this.synth.midi(bytes[0], bytes[1] ?? 0, bytes[2] ?? 0), text => { byId("midi").textContent = text; });
        } catch {
            byId("midi").textContent = "MIDI: not allowed";
        }
    }

    shortcut(event) {
        if (event.target.closest?.("input:not([type=range]), dialog")) return;
        const isUndo = (event.ctrlKey || event.metaKey) && !event.altKey && event.key.toLowerCase() === "z";
        if (isUndo || (event.ctrlKey && event.key === "y")) {
            event.preventDefault();
            this.move(event.shiftKey || event.key === "y" ? 1 : -1);
        } else if (event.key === "Backspace") {
            event.preventDefault();
            this.panic();
        }
    }

    showStatus() {
        const { peak = 0, notes = 0, load = 0, late = 0 } = this.status ?? {};
        const isOn = this.context.state === "running";
        const decibels = 20 * Math.log10(peak);
        const isSilent = !(decibels > quietest);
        const meter = byId("meter");
        const shown = Math.min(Math.max(decibels, quietest), loudestShown);
        meter.style.setProperty("--level", isSilent ? 0 : (shown - quietest) / (loudestShown - quietest));
        meter.classList.toggle("over", peak > 1);
        meter.setAttribute("aria-valuenow", isSilent ? quietest : Math.round(shown));
        const text = isSilent ? "−∞ dB" : `${decibels.toFixed(1).replace("-", "−")} dB`;
        meter.setAttribute("aria-valuetext", isSilent ? "silent" : text);
        byId("level").value = text;
        const count = `${notes} ${notes === 1 ? "note" : "notes"}`;
        byId("status").textContent = isOn
            ? `${count} · load ${Math.round(load * 100)} % · ${late} late ${late === 1 ? "block" : "blocks"}`
            : "Press a key to start the sound.";
        byId("status").classList.toggle("late", late > 0);
        this.scopes.run(isOn && (notes > 0 || peak > silence));
    }
}

async function open() {
    const context = new AudioContext({ latencyHint: "interactive" });
    const loaded = Promise.all(["face.json", "help.json", "site.json"].map(getJson));
    const engine = await import("./synth.js");
    const [synth, [layout, help, site]] = await Promise.all([engine.createSynth(context), loaded]);
    globalThis.page = new Page({ context, synth, engine, layout, help, site });
    byId("tour-link").hidden = site.programs.length === 0;
    byId("browser").open = matchMedia("(min-width: 68rem)").matches; // beside the face
    byId("main").removeAttribute("aria-busy");
}

open().catch(error => {
    byId("failure").hidden = false;
    byId("failure").textContent = `The instrument could not be started: ${error.message}`;
    throw error;
});
