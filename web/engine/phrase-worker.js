// Renders phrases beside the page, which stays responsive.

import { Engine, loadModule, phraseOf } from "./engine.js";

const engine = loadModule().then(module => Engine.make(module));

onmessage = async ({ data: { id, program } }) => {
    try {
        const samples = phraseOf(await engine, program);
        postMessage({ id, samples }, [samples.buffer]);
    } catch (error) {
        postMessage({ id, error: error.message });
    }
};
