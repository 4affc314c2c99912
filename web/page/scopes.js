// What sounds, as a waveform and as a spectrum.

const lowest = 30; // Hz, the edges of the tour's spectrograms
const highest = 18000;
const faintest = -100; // dB
const waveSamples = 1024;
const marks = [100, 1000, 10000];

const cssColour = (element, name) => getComputedStyle(element).getPropertyValue(name).trim();

export class Scopes {
    constructor(context, source) {
        this.rate = context.sampleRate;
        this.analyser = new AnalyserNode(context, { fftSize: 8192, smoothingTimeConstant: 0.6,
            minDecibels: faintest, maxDecibels: 0 });
        source.connect(this.analyser);
        this.wave = new Float32Array(this.analyser.fftSize);
        this.bins = new Float32Array(this.analyser.frequencyBinCount);
        this.scope = document.getElementById("scope");
        this.spectrum = document.getElementById("spectrum");
        this.isRunning = false;
        addEventListener("resize", () => this.isRunning || this.draw());
        this.draw();
    }

    // Draws as long as there is sound.
    run(isSounding) {
        if (isSounding === this.isRunning) return;
        this.isRunning = isSounding;
        const step = () => {
            this.draw();
            if (this.isRunning) requestAnimationFrame(step);
        };
        step();
    }

    // A canvas as sharp as the screen, cleared; units are the page's pixels.
    surface(canvas) {
        const density = devicePixelRatio || 1;
        const width = canvas.clientWidth;
        const height = canvas.clientHeight;
        if (canvas.width !== Math.round(width * density) || canvas.height !== Math.round(height * density)) {
            canvas.width = Math.round(width * density);
            canvas.height = Math.round(height * density);
        }
        const surface = canvas.getContext("2d");
        surface.setTransform(density, 0, 0, density, 0, 0);
        surface.clearRect(0, 0, width, height);
        return [surface, width, height];
    }

    draw() {
        this.analyser.getFloatTimeDomainData(this.wave);
        this.analyser.getFloatFrequencyData(this.bins);
        this.drawWave();
        this.drawSpectrum();
    }

    // From where the wave rises through its mean, so that a tone stands still.
    start() {
        const last = this.wave.length - waveSamples;
        let sum = 0;
        for (const sample of this.wave) sum += sample;
        const mean = sum / this.wave.length;
        for (let i = 1; i < last; ++i) if (this.wave[i - 1] < mean && this.wave[i] >= mean) return i;
        return 0;
    }

    drawWave() {
        const [surface, width, height] = this.surface(this.scope);
        surface.strokeStyle = cssColour(this.scope, "--grid");
        surface.beginPath();
        surface.moveTo(0, height / 2 + 0.5);
        surface.lineTo(width, height / 2 + 0.5);
        surface.stroke();
        const first = this.start();
        let peak = 1;
        for (let i = 0; i < waveSamples; ++i) peak = Math.max(peak, Math.abs(this.wave[first + i]));
        surface.strokeStyle = cssColour(this.scope, "--amber");
        surface.lineWidth = 1.5;
        surface.lineJoin = "round";
        surface.beginPath();
        for (let x = 0; x <= width; ++x) {
            const sample = this.wave[first + Math.floor((x / width) * (waveSamples - 1))] / peak;
            surface.lineTo(x, height / 2 - sample * (height / 2 - 4));
        }
        surface.stroke();
    }

    drawSpectrum() {
        const [surface, width, height] = this.surface(this.spectrum);
        const octaves = Math.log2(highest / lowest);
        const place = hz => (Math.log2(hz / lowest) / octaves) * width;
        this.drawMarks(surface, place, width, height);
        const binOf = x => (lowest * 2 ** ((x / width) * octaves) * this.wave.length) / this.rate;
        surface.beginPath();
        surface.moveTo(0, height);
        for (let x = 0; x <= width; ++x) surface.lineTo(x, height - this.heightBetween(binOf(x), binOf(x + 1)) * (height - 16));
        surface.lineTo(width, height);
        const shade = surface.createLinearGradient(0, 0, 0, height);
        shade.addColorStop(0, cssColour(this.spectrum, "--sky"));
        shade.addColorStop(1, cssColour(this.spectrum, "--sky-deep"));
        surface.fillStyle = shade;
        surface.fill();
    }

    // The strongest of the bins, 0 to 1; between two bins what a line through them gives.
    heightBetween(from, to) {
        const below = Math.floor(from);
        let level = this.bins[below] + (this.bins[below + 1] - this.bins[below]) * (from - below);
        for (let bin = Math.ceil(from); bin < to; ++bin) level = Math.max(level, this.bins[bin]);
        return Number.isFinite(level) ? Math.min(Math.max(1 - level / faintest, 0), 1) : 0;
    }

    drawMarks(surface, place, width, height) {
        surface.strokeStyle = cssColour(this.spectrum, "--grid");
        surface.fillStyle = cssColour(this.spectrum, "--quiet");
        surface.font = "11px system-ui, sans-serif";
        surface.lineWidth = 1;
        let written = 0;
        for (const hz of marks) {
            const x = Math.round(place(hz)) + 0.5;
            surface.beginPath();
            surface.moveTo(x, 0);
            surface.lineTo(x, height);
            surface.stroke();
            const text = hz < 1000 ? `${hz} Hz` : `${hz / 1000} kHz`;
            const size = surface.measureText(text).width;
            const left = x + 4 + size > width ? x - 4 - size : x + 4;
            if (left < written) continue; // no room
            surface.fillText(text, left, 12);
            written = left + size;
        }
    }
}
