// The browser's engine, run by node, against this machine's. Environment: ZELVATONE_WEB, the folder of
// the modules; ZELVATONE_NATIVE, that of the programs built for this machine.

import assert from "node:assert/strict";
import { execFileSync, spawnSync } from "node:child_process";
import { createHash } from "node:crypto";
import { mkdtempSync, readFileSync, rmSync, writeFileSync } from "node:fs";
import { tmpdir } from "node:os";
import { join } from "node:path";
import { after, test } from "node:test";
import { WASI } from "node:wasi";

import { Engine, phraseOf } from "../../web/engine/engine.js";

const folder = mkdtempSync(join(tmpdir(), "zelvatone-web-"));
after(() => rmSync(folder, { recursive: true }));

const compiled = name => WebAssembly.compile(readFileSync(join(process.env.ZELVATONE_WEB, name)));
const native = name => join(process.env.ZELVATONE_NATIVE, name);
const module = await compiled("zelvatone.wasm");
const engine = await Engine.make(module);
const { calls } = engine;
const kPrograms = 42, kParameters = 23;

const link = () => engine.text(calls.state(133.7));
const values = () => Array.from({ length: kParameters }, (_, i) => calls.units(i));

function takeLink(text) {
    engine.putText(text);
    return calls.setState();
}

function takeFile(bytes) {
    engine.put(bytes);
    return engine.text(calls.load());
}

test("All programs have the native hash", () => {
    const { hashes, sampleRate } = JSON.parse(execFileSync(native("zelvatone_phrase_hashes")));
    assert.equal(sampleRate, 48000);
    assert.equal(hashes.length, kPrograms);
    assert.equal(new Set(hashes).size, kPrograms);
    for (let program = 0; program < kPrograms; ++program) {
        const samples = phraseOf(engine, program);
        assert.equal(samples.length, 6 * sampleRate);
        assert.equal(createHash("sha256").update(samples).digest("hex"), hashes[program], `program ${program}`);
    }
});

// Conversions out of range, NaN, the tables from sin and pow, texts, and performances in which
// values break and frequencies run away.
test("Fingerprints are the native ones", async () => {
    const expected = spawnSync(native("zelvatone_fingerprints"), { encoding: "utf8" }).stderr;
    const lines = join(folder, "fingerprints.txt");
    writeFileSync(lines, "");
    const program = `
        import { WASI } from "node:wasi";
        import { readFileSync } from "node:fs";
        const wasi = new WASI({ version: "preview1", preopens: { "/": ${JSON.stringify(folder)} } });
        const module = await WebAssembly.compile(readFileSync(process.argv[1]));
        wasi.start(await WebAssembly.instantiate(module, wasi.getImportObject()));`;
    const run = spawnSync(process.execPath, ["--no-warnings", "--input-type=module", "-e", program,
        join(process.env.ZELVATONE_WEB, "zelvatone_fingerprints.wasm")], { encoding: "utf8" });
    assert.equal(run.status, 0, run.stderr);
    assert.ok(expected.split("\n").length > 50, expected);
    assert.doesNotMatch(expected, /^scenario \d+ \S+ /m); // no renderer differs from the reference
    assert.equal(run.stderr, expected);
});

test("Programs are saved as the plug-in's host saves them", () => {
    const bank = join(folder, "all.fxb");
    execFileSync(native("zelvatone"), ["preset", "save", bank]);
    const records = readFileSync(bank).subarray(8 + 5 * 4 + 128); // after the bank's own head
    const size = records.length / kPrograms;
    for (let program = 0; program < kPrograms; ++program) {
        calls.setProgram(program);
        const expected = records.subarray(program * size, (program + 1) * size);
        assert.deepEqual(Buffer.from(engine.take(calls.save())), expected, `program ${program}`);
    }
});

// As in the plug-in, whose values between the places of a knob move to the nearest one.
test("A loaded program is saved as it was", () => {
    for (let program = 0; program < kPrograms; ++program) {
        calls.setProgram(program);
        const file = engine.take(calls.save()), name = engine.text(calls.editedName());
        calls.setProgram((program + 1) % kPrograms);
        assert.equal(takeFile(file), "");
        assert.equal(engine.text(calls.editedName()), name);
        assert.deepEqual(engine.take(calls.save()), file);
    }
});

test("A link restores program, values, name and tempo", () => {
    for (let program = 0; program < kPrograms; ++program) {
        calls.setProgram(program);
        for (let i = 0; i < kParameters; i += 3) calls.setParameter(i, (7 * program + i) % 64 / 63);
        const before = values(), name = engine.text(calls.editedName()), text = link();
        assert.match(text, /^[A-Za-z0-9._~%-]+$/);
        assert.equal(decodeURI(encodeURI(text)), text);
        calls.setProgram((program + 1) % kPrograms);
        assert.equal(takeLink(text), Math.fround(133.7));
        assert.equal(calls.program(), program);
        assert.equal(engine.text(calls.editedName()), name);
        assert.deepEqual(values(), before);
        assert.equal(link(), text);
    }
});

test("Settings set just the values that they are of", () => {
    const isWhole = index => [0, 1, 2, 3, 13, 17].includes(index);
    for (let program = 0; program < kPrograms; ++program) {
        calls.setProgram(program);
        const before = values();
        for (let i = 0; i < kParameters; ++i) calls.setParameter(i, calls.programValue(program, i));
        values().forEach((value, i) => {
            if (isWhole(i)) assert.equal(value, before[i], `program ${program}, parameter ${i}`);
            else assert.ok(Math.abs(value - before[i]) <= 1e-6 * Math.max(1, Math.abs(value)), `${value} ${before[i]}`);
        });
    }
    for (let i = 0; i < kParameters; ++i) {
        for (let place = 0; place <= 500; ++place) {
            calls.setParameter(i, Math.fround(Math.sin(place) ** 2));
            const value = calls.units(i);
            calls.setParameter(i, calls.parameter(i));
            assert.equal(calls.units(i), value, `parameter ${i}`);
        }
    }
});

test("A bad link changes nothing", () => {
    calls.setProgram(7);
    const good = link();
    const fields = good.split("~");
    const changed = (i, field) => fields.with?.(i, field).join("~") ??
        [...fields.slice(0, i), field, ...fields.slice(i + 1)].join("~");
    for (const text of ["", "~", "junk", good + "~", good + "~1", good.slice(0, 40), " " + good,
        changed(0, "2"), changed(1, "42"), changed(1, "-1"), changed(1, "1.5"), changed(1, "x"),
        changed(2, "0"), changed(2, "nan"), changed(2, "-120"), changed(2, "0x10"), changed(2, "1e99"),
        changed(3, "0.5"), changed(3, "99"), changed(7, ""), changed(7, "nan"), changed(7, "+1"),
        changed(26, ""), changed(26, "a%2"), changed(26, "a%zz"), changed(26, "%61"), changed(26, "a b")]) {
        assert.equal(takeLink(text), 0, text);
        assert.equal(link(), good, text);
    }
});

test("A bad file changes nothing", () => {
    calls.setProgram(7);
    const before = link(), good = engine.take(calls.save());
    const changed = (at, byte) => Uint8Array.from(good, (old, i) => i === at ? byte : old);
    const bad = [new Uint8Array(0), good.slice(0, 60), good.slice(0, 100), Uint8Array.of(...good, 0)];
    for (const at of [0, 4, 7, 8, 15, 19, 27, 60]) bad.push(changed(at, 0x7f));
    bad.push(Uint8Array.from(good, (old, i) => i >= 28 && i < 56 ? 0x41 : old)); // a name without an end
    for (const bytes of bad) {
        assert.notEqual(takeFile(bytes), "");
        assert.equal(link(), before);
    }
});

// One event in each of the longest blocks, and not at the start of one: events that wait together
// may hold each other up by a sample.
test("Blocks of any length make the same sound, and memory stays as it is", async () => {
    const play = async length => {
        const one = await Engine.make(module);
        one.calls.startInstrument(48000);
        const out = new Float32Array(8 * 4096);
        const bytes = one.memory.buffer.byteLength;
        for (let first = 0; first < out.length; first += length) {
            const frames = Math.min(length, out.length - first);
            const place = one.calls.beginBlock(frames);
            for (const [frame, ...message] of [[1, 0x90, 60, 100], [5000, 0x90, 64, 90], [9999, 0xE0, 3, 90],
                [13000, 0xB0, 64, 127], [17000, 0x80, 60, 0], [22000, 0xB0, 7, 50], [26000, 0xB0, 64, 0]]) {
                if (frame >= first && frame < first + frames) one.calls.midiAt(frame - first, ...message);
            }
            one.calls.endBlock();
            out.set(one.floats(place, frames), first);
        }
        assert.equal(one.memory.buffer.byteLength, bytes);
        return out;
    };
    const whole = await play(4096);
    assert.ok(whole.some(sample => Math.abs(sample) > 0.01));
    assert.deepEqual(await play(128), whole);
});

// A MIDI file of the phrase: 480 ticks to a quarter note, 120 quarter notes a minute.
function phraseFile() {
    const bytes = [];
    let last = 0;
    for (let i = 0; i < calls.phraseMessageCount(); ++i) {
        const tick = Math.round(calls.phraseSeconds(i) * 960), wait = tick - last, message = calls.phraseMessage(i);
        last = tick;
        bytes.push(wait >> 7 & 0x7f | 0x80, wait & 0x7f, message >> 16, message >> 8 & 0xff, message & 0xff);
    }
    bytes.push(0, 0xff, 0x2f, 0);
    const length = Buffer.alloc(4);
    length.writeUInt32BE(bytes.length);
    return Buffer.concat([Buffer.from("MThd\0\0\0\x06\0\0\0\x01\x01\xe0MTrk", "latin1"), length, Buffer.from(bytes)]);
}

test("The phrase is what the plug-in plays", () => {
    const song = join(folder, "phrase.mid"), sound = join(folder, "phrase.wav");
    writeFileSync(song, phraseFile());
    for (const program of [0, 7, 26, 41]) {
        execFileSync(native("zelvatone"), ["render", song, "-o", sound, "-q", "--rate", "48000", "--block", "128", "--mono",
            "--format", "float", "--tail", "2", "--program", String(program)]);
        const file = readFileSync(sound);
        const start = file.indexOf("data", 12, "latin1") + 8;
        const expected = new Float32Array(file.buffer.slice(file.byteOffset + start));
        const samples = phraseOf(engine, program);
        const count = Math.min(samples.length, expected.length);
        assert.ok(count > 5 * 48000, String(count));
        assert.deepEqual(samples.subarray(0, count), expected.subarray(0, count), `program ${program}`);
    }
});
