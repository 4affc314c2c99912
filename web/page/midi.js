// MIDI keyboards, where the browser knows them. The browser asks the user first.

export const hasMidi = () => typeof navigator.requestMIDIAccess === "function";

// Sends every message of every keyboard to `receive(bytes)`, also of those that are plugged in later.
// `told(text)` says which are there.
export async function connectMidi(receive, told) {
    const access = await navigator.requestMIDIAccess();
    const connect = () => {
        const inputs = [...access.inputs.values()];
        for (const input of inputs) input.onmidimessage = event => receive(event.data);
        told(inputs.length ? `MIDI: ${inputs.map(input => input.name).join(", ")}` : "MIDI: no keyboard is plugged in");
    };
    access.onstatechange = connect;
    connect();
}
