// Stands in for the engine where it is not built, so that the page itself is tested everywhere: the
// programs are those that `zelvatone` printed, the sound is a sine.

const known = await (await fetch(new URL("fake.json", import.meta.url))).json();

const worklet = `registerProcessor("sine", class extends AudioWorkletProcessor {
    constructor() {
        super();
        this.notes = new Map();
        this.time = 0;
        this.blocks = 0;
        this.port.onmessage = ({ data: [note, velocity] }) => {
            if (note < 0) this.notes.clear();
            else if (velocity > 0) this.notes.set(note, velocity);
            else this.notes.delete(note);
        };
    }
    process(inputs, [output]) {
        let peak = 0;
        for (let i = 0; i < output[0].length; ++i) {
            let sum = 0;
            for (const [note, velocity] of this.notes)
                sum += 0.003 * velocity * Math.sin(2 * Math.PI * 440 * 2 ** ((note - 69) / 12) * this.time);
            this.time += 1 / sampleRate;
            for (const channel of output) channel[i] = sum;
            peak = Math.max(peak, Math.abs(sum));
        }
        if (++this.blocks % 16 === 0) this.port.postMessage({ peak, notes: this.notes.size, load: 0.01, late: 0 });
        return true;
    }
});`;

class Synth {
    constructor(node) {
        this.node = node;
        this.programs = known.programs;
        this.parameters = known.parameters;
        this.phrase = [{ seconds: 0, bytes: [0x90, 57, 100] }, { seconds: 0.3, bytes: [0x80, 57, 0] }];
        this.tempo = 120;
        this.onstatus = () => {};
        node.port.onmessage = ({ data }) => this.onstatus(data);
        this.setProgram(0);
    }
    display(index, value) {
        const known = this.programs.find(({ values }) => values[index] === Math.fround(value));
        return known ? known.displays[index] : `${Math.fround(value).toFixed(2)} ${this.parameters[index].label}`.trim();
    }
    setParameter(index, value) { this.values[index] = value; }
    parameter(index) { return this.values[index]; }
    setProgram(index) {
        this.program = index;
        this.values = Float32Array.from(this.programs[index].values);
    }
    get programName() { return this.programs[this.program].name; }
    noteOn(note, velocity) { this.node.port.postMessage([note, velocity]); }
    noteOff(note) { this.node.port.postMessage([note, 0]); }
    midi(status, note, velocity) {
        if ((status & 0xf0) === 0x90) this.noteOn(note, velocity);
        else if ((status & 0xf0) === 0x80) this.noteOff(note);
    }
    panic() { this.node.port.postMessage([-1, 0]); }
    setTempo(tempo) { this.tempo = tempo; }
    save() { return new TextEncoder().encode(this.state()); }
    load(bytes) { this.setState(new TextDecoder().decode(bytes)); }
    state() { return [this.program, this.tempo, ...this.values].join("_"); }
    setState(text) {
        const [program, tempo, ...values] = text.split("_").map(Number);
        if (!this.programs[program] || values.length !== this.parameters.length || values.some(Number.isNaN))
            throw new Error("not a sound");
        this.program = program;
        this.tempo = tempo;
        this.values = Float32Array.from(values);
    }
}

export async function createSynth(context) {
    const address = URL.createObjectURL(new Blob([worklet], { type: "text/javascript" }));
    await context.audioWorklet.addModule(address);
    return new Synth(new AudioWorkletNode(context, "sine", { numberOfInputs: 0, outputChannelCount: [2] }));
}

export async function renderPhrase(index) {
    return Float32Array.of(index);
}

export async function hashPhrase(index) {
    const digest = await crypto.subtle.digest("SHA-256", await renderPhrase(index));
    return Array.from(new Uint8Array(digest), byte => byte.toString(16).padStart(2, "0")).join("");
}
