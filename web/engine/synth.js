// The instrument for a page. Values, texts and files come from an engine on the page's own thread,
// the sound from another one on the audio thread.

import { Engine, loadModule } from "./engine.js";

const kNoteOff = 0x80, kNoteOn = 0x90, kProgramChange = 0xC0;

// The processor may take the compiled engine; where a browser does not send that, it gets none and
// the page's own error says so.
function makeNode(context, module) {
    return new AudioWorkletNode(context, "zelvatone", {
        numberOfInputs: 0, numberOfOutputs: 1, outputChannelCount: [2], processorOptions: { module },
    });
}

function programsOf(engine) {
    const { calls } = engine;
    return Array.from({ length: calls.programCount() }, (_, index) => ({
        index,
        name: engine.text(calls.programName(index)),
        values: Float32Array.from({ length: calls.parameterCount() }, (_, i) => calls.programValue(index, i)),
    }));
}

function parametersOf(engine) {
    const { calls } = engine;
    return Array.from({ length: calls.parameterCount() }, (_, index) => ({
        index,
        name: engine.text(calls.parameterName(index)),
        label: engine.text(calls.parameterLabel(index)),
        default: calls.programValue(0, index),
    }));
}

function phraseFrom(engine) {
    const { calls } = engine;
    return Array.from({ length: calls.phraseMessageCount() }, (_, i) => {
        const message = calls.phraseMessage(i);
        return {
            seconds: calls.phraseSeconds(i),
            bytes: [message >> 16 & 0xff, message >> 8 & 0xff, message & 0xff],
        };
    });
}

// Indices are whole numbers, and values from 0 to 1, as a knob has them. Every `time` is in seconds
// of the context's clock; without one, or with one that has passed, things happen at once.
export class Synth {
    constructor(engine, node) {
        this.engine = engine;
        this.calls = engine.calls;
        this.node = node;
        this.programs = programsOf(engine);
        this.parameters = parametersOf(engine);
        // What the phrase of all programs plays: {seconds, bytes}.
        this.phrase = phraseFrom(engine);
        this.tempo = 120;
        // Called some times a second with {peak, notes, load, late}: the highest sample since the last
        // call (1 is full scale), notes that sound, the share of its time that the audio thread has
        // rendered, and blocks that took longer to render than to play, since the start.
        this.onstatus = null;
        node.port.onmessage = message => this.onstatus?.(message.data);
        this.sendValues();
    }

    // The text of a parameter with its knob at `value`.
    display(index, value) {
        return this.engine.text(this.calls.display(this.checked(index), value));
    }

    setParameter(index, value, time) {
        this.calls.setParameter(this.checked(index), value);
        this.post({ kind: "value", index, units: this.calls.units(index), time });
    }

    // A knob's position that sets the parameter to just what it is.
    parameter(index) {
        return this.calls.parameter(this.checked(index));
    }

    // A fresh copy of a factory program.
    setProgram(index, time) {
        if (!this.programs[index]) throw new RangeError(`there is no program ${index}`);
        this.calls.setProgram(index);
        this.sendValues(time);
    }

    get program() {
        return this.calls.program();
    }

    get programName() {
        return this.engine.text(this.calls.editedName());
    }

    // 0 to 127, both.
    noteOn(note, velocity, time) {
        this.midi(kNoteOn, note, velocity, time);
    }

    noteOff(note, time) {
        this.midi(kNoteOff, note, 0, time);
    }

    // Notes, bends, pedals and volumes. A program change chooses a program.
    midi(byte0, byte1, byte2 = 0, time = undefined) {
        if ((byte0 & 0xF0) === kProgramChange) {
            if (this.programs[byte1]) this.setProgram(byte1, time);
            return;
        }
        this.post({ kind: "midi", bytes: [byte0, byte1, byte2], time });
    }

    // Ends all sound at once, with pedals up and the bend centred.
    panic() {
        this.post({ kind: "panic" });
    }

    // Beats per minute, above 0.
    setTempo(tempo, time) {
        if (!(tempo > 0 && tempo < Infinity)) throw new RangeError(`${tempo} is not a tempo`);
        this.tempo = Math.fround(tempo);
        this.post({ kind: "tempo", tempo: this.tempo, time });
    }

    // The bytes of an .fxp file.
    save() {
        return this.engine.take(this.calls.save());
    }

    // Takes an .fxp file. Throws for other bytes, with nothing taken.
    load(bytes) {
        this.engine.put(new Uint8Array(bytes));
        const error = this.engine.text(this.calls.load());
        if (error) throw new Error(error);
        this.sendValues();
    }

    // Program, values, name and tempo, as text that an address can hold.
    state() {
        return this.engine.text(this.calls.state(this.tempo));
    }

    // Takes what state() gave. Throws for other texts, with nothing taken.
    setState(text) {
        this.engine.putText(text);
        const tempo = this.calls.setState();
        if (!tempo) throw new Error("the text is not a state of the instrument");
        this.setTempo(tempo);
        this.sendValues();
    }

    // Ends the sound for good, and frees the audio thread's engine.
    close() {
        this.post({ kind: "end" });
        this.node.disconnect();
    }

    checked(index) {
        if (!this.parameters[index]) throw new RangeError(`there is no parameter ${index}`);
        return index;
    }

    sendValues(time) {
        const units = Float32Array.from(this.parameters, (_, i) => this.calls.units(i));
        this.post({ kind: "values", units, time });
    }

    post(message) {
        this.node.port.postMessage(message);
    }
}

// `audioContext` may be suspended. The caller connects the node.
export async function createSynth(audioContext) {
    const [module] = await Promise.all([
        loadModule(),
        audioContext.audioWorklet.addModule(new URL("synth-worklet.js", import.meta.url)),
    ]);
    return new Synth(await Engine.make(module), makeNode(audioContext, module));
}

let worker = null;
const waiting = new Map();
let lastId = 0;

function phraseWorker() {
    if (worker) return worker;
    worker = new Worker(new URL("phrase-worker.js", import.meta.url), { type: "module" });
    worker.onmessage = ({ data: { id, samples, error } }) => {
        const { resolve, reject } = waiting.get(id);
        waiting.delete(id);
        if (error) reject(new Error(error)); else resolve(samples);
    };
    worker.onerror = event => {
        for (const { reject } of waiting.values()) reject(new Error(event.message || "the worker has failed"));
        waiting.clear();
        worker = null;
    };
    return worker;
}

// The samples of the phrase with a factory program: 48 kHz, one channel.
export function renderPhrase(program) {
    return new Promise((resolve, reject) => {
        const id = ++lastId;
        waiting.set(id, { resolve, reject });
        phraseWorker().postMessage({ id, program });
    });
}

// The checksum of those, as the native build publishes it in hashes.json.
export async function hashPhrase(program) {
    return hashOf(await renderPhrase(program));
}

// SHA-256 in hexadecimal digits, of samples as little-endian bytes: every machine with a browser is
// little-endian.
export async function hashOf(samples) {
    const bytes = samples.buffer.slice(samples.byteOffset, samples.byteOffset + samples.byteLength);
    const digest = new Uint8Array(await crypto.subtle.digest("SHA-256", bytes));
    return Array.from(digest, byte => byte.toString(16).padStart(2, "0")).join("");
}
