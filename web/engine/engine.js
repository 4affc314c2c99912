// The engine's functions for scripts: on the page's thread, in a worker, in the audio thread, in
// node. Binding.cpp says what each does.

// What the engine prints and how it ends are of no use to a page: the lines are dropped, and an end
// becomes an error.
function systemFor(memoryOf) {
    const view = () => new DataView(memoryOf().buffer);
    const calls = {
        fd_write(file, parts, count, written) {
            let size = 0;
            for (let i = 0; i < count; ++i) size += view().getUint32(parts + 8 * i + 4, true);
            view().setUint32(written, size, true);
            return 0;
        },
        proc_exit(code) {
            throw new Error(`the engine has ended with ${code}`);
        },
    };
    const unsupported = 52; // "function not supported"
    return { wasi_snapshot_preview1: new Proxy(calls, { get: (all, name) => all[name] ?? (() => unsupported) }) };
}

export function importsFor(memoryOf) {
    return systemFor(memoryOf);
}

// One engine with memory of its own.
export class Engine {
    // `module`: a WebAssembly.Module.
    static async make(module) {
        let engine = null;
        const instance = await WebAssembly.instantiate(module, importsFor(() => engine.memory));
        engine = new Engine(instance.exports);
        return engine.begin();
    }

    // The same at once, where waiting is not possible: in the audio thread.
    static makeNow(module) {
        let engine = null;
        const instance = new WebAssembly.Instance(module, importsFor(() => engine.memory));
        engine = new Engine(instance.exports);
        return engine.begin();
    }

    constructor(calls) {
        this.calls = calls;
        this.memory = calls.memory;
    }

    begin() {
        this.calls._initialize();
        return this;
    }

    // The text, ended by a zero, at `place`.
    text(place) {
        const bytes = new Uint8Array(this.memory.buffer);
        let end = place;
        while (bytes[end] !== 0) ++end;
        return new TextDecoder().decode(bytes.slice(place, end));
    }

    floats(place, count) {
        return new Float32Array(this.memory.buffer, place, count);
    }

    // Puts bytes where the next call takes them.
    put(bytes) {
        const place = this.calls.room(bytes.length);
        new Uint8Array(this.memory.buffer, place, bytes.length).set(bytes);
    }

    putText(text) {
        this.put(new TextEncoder().encode(text));
    }

    // The bytes that a call has left.
    take(size) {
        return new Uint8Array(this.memory.buffer, this.calls.bytes(), size).slice();
    }
}

// The samples of the phrase with a factory program: 48 kHz, one channel.
export function phraseOf(engine, program) {
    const count = engine.calls.renderPhrase(program);
    return engine.floats(engine.calls.phrase(), count).slice();
}

// Gunzips `bytes` unless a server has done so on the way.
async function unpacked(bytes) {
    const isPacked = bytes[0] === 0x1f && bytes[1] === 0x8b;
    if (!isPacked) return bytes;
    const stream = new Blob([bytes]).stream().pipeThrough(new DecompressionStream("gzip"));
    return new Uint8Array(await new Response(stream).arrayBuffer());
}

let loading = null;

// The compiled engine: loaded once, from beside this script.
export function loadModule() {
    loading ??= (async () => {
        const reply = await fetch(new URL("zelvatone.wasm.gzip", import.meta.url));
        if (!reply.ok) throw new Error(`the engine could not be loaded (${reply.status})`);
        return WebAssembly.compile(await unpacked(new Uint8Array(await reply.arrayBuffer())));
    })();
    loading.catch(() => { loading = null; }); // try again at the next call
    return loading;
}
