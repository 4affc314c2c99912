// The instrument on the audio thread. While it plays, nothing is allocated here: messages from the
// page are put into a queue that is made beforehand, and wait there for their sample.

import { Engine } from "./engine.js";

const kMidi = 0, kValue = 1, kTempo = 2;
const kFields = 5; // time, kind and three numbers
const kMostEvents = 2048;
const kReportsASecond = 20;

// Events by rising time; those of one time in the order in which they came.
class EventQueue {
    constructor() {
        this.fields = new Float64Array(kMostEvents * kFields);
        this.first = 0;
        this.count = 0;
        this.lost = 0;
    }

    place(i) {
        return ((this.first + i) % kMostEvents) * kFields;
    }

    clear() {
        this.count = 0;
    }

    add(time, kind, a, b, c) {
        if (this.count === kMostEvents) {
            ++this.lost;
            return;
        }
        const fields = this.fields;
        let i = this.count++;
        for (; i > 0 && fields[this.place(i - 1)] > time; --i) {
            const from = this.place(i - 1), to = this.place(i);
            fields.copyWithin(to, from, from + kFields);
        }
        const at = this.place(i);
        fields[at] = time;
        fields[at + 1] = kind;
        fields[at + 2] = a;
        fields[at + 3] = b;
        fields[at + 4] = c;
    }
}

class SynthProcessor extends AudioWorkletProcessor {
    constructor(options) {
        super();
        const { module, bytes } = options.processorOptions;
        this.engine = Engine.makeNow(module ?? new WebAssembly.Module(bytes));
        this.calls = this.engine.calls;
        this.calls.startInstrument(sampleRate);
        this.samples = null; // the block in the engine's memory
        this.queue = new EventQueue();
        this.isReset = false; // wanted before the next block
        this.hasEnded = false;
        // The clock of this thread counts milliseconds: single blocks cannot be measured with it,
        // many can.
        this.clock = globalThis.performance ?? Date;
        this.report = { peak: 0, notes: 0, load: 0, late: 0 };
        this.framesToReport = Math.round(sampleRate / kReportsASecond);
        this.framesReported = 0;
        this.busy = 0; // ms since the last report
        this.port.onmessage = message => this.take(message.data);
    }

    // `now`: what a time that has passed, or none, stands for.
    take(data) {
        const time = data.time ?? 0;
        switch (data.kind) {
        case "midi":
            this.queue.add(time, kMidi, data.bytes[0], data.bytes[1], data.bytes[2]);
            break;
        case "value":
            this.queue.add(time, kValue, data.index, data.units, 0);
            break;
        case "values":
            for (let i = 0; i < data.units.length; ++i) this.queue.add(time, kValue, i, data.units[i], 0);
            break;
        case "tempo":
            this.queue.add(time, kTempo, data.tempo, 0, 0);
            break;
        case "panic":
            this.queue.clear();
            this.isReset = true;
            break;
        case "end":
            this.hasEnded = true;
            break;
        }
    }

    // Hands over what is due before the end of the block.
    sendEvents(frames) {
        const queue = this.queue, fields = queue.fields;
        while (queue.count > 0) {
            const at = queue.first * kFields;
            const frame = Math.round(fields[at] * sampleRate) - currentFrame;
            if (frame >= frames) break;
            const due = Math.max(frame, 0);
            const a = fields[at + 2], b = fields[at + 3], c = fields[at + 4];
            switch (fields[at + 1]) {
            case kMidi: this.calls.midiAt(due, a, b, c); break;
            case kValue: this.calls.valueAt(due, a, b); break;
            default: this.calls.tempoAt(due, a);
            }
            queue.first = (queue.first + 1) % kMostEvents;
            --queue.count;
        }
    }

    render(channels) {
        const frames = channels[0].length;
        if (this.isReset) {
            this.isReset = false;
            this.calls.reset();
        }
        const place = this.calls.beginBlock(frames);
        this.sendEvents(frames);
        const peak = this.calls.endBlock();
        if (this.samples === null || this.samples.length !== frames || this.samples.byteOffset !== place ||
            this.samples.buffer !== this.engine.memory.buffer) {
            this.samples = this.engine.floats(place, frames);
        }
        for (let i = 0; i < channels.length; ++i) channels[i].set(this.samples);
        if (peak > this.report.peak) this.report.peak = peak;
        return frames;
    }

    process(inputs, outputs) {
        const start = this.clock.now();
        const frames = this.render(outputs[0]);
        const spent = this.clock.now() - start;
        this.busy += spent;
        if (spent > 1000 * frames / sampleRate) ++this.report.late;
        this.framesReported += frames;
        if (this.framesReported >= this.framesToReport) this.sendReport();
        return !this.hasEnded;
    }

    sendReport() {
        this.report.notes = this.calls.soundingNotes();
        this.report.load = this.busy * sampleRate / (1000 * this.framesReported);
        this.port.postMessage(this.report);
        this.report.peak = 0;
        this.busy = 0;
        this.framesReported = 0;
    }
}

registerProcessor("zelvatone", SynthProcessor);
