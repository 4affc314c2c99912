#!/usr/bin/python3
"""Usage: tools/learn_from_dataset.py FOLDER [PARAMETER...] [-o PICTURE.svg]

Learns to hear parameters: reads a dataset of `zelvatone dataset`, fits a small regressor from the
sound to up to three of the parameters that vary in it, and draws what it finds for the sounds that
are kept for tests. An example of reading, with Debian's python3-numpy and python3-soundfile."""

import argparse
import io
import json
import tarfile
from pathlib import Path

import numpy
import soundfile

SLICES = 12  # of time
BANDS = 32  # of frequency, each wider than the one below
FEATURES = 400  # of the regressor


def soundsOf(folder):
    """(label, samples) of every sound, in order: the two files of a sound stand side by side."""
    for path in sorted(Path(folder, "shards").glob("*.tar")):
        with tarfile.open(path) as shard:
            samples = None
            for member in shard:
                content = shard.extractfile(member).read()
                if member.name.endswith(".json"):
                    yield json.loads(content), samples
                else:
                    samples, _ = soundfile.read(io.BytesIO(content), dtype="float32")


def spectrumOf(samples):
    """Levels in dB, SLICES x BANDS: what there is to hear."""
    rows = []
    for piece in numpy.array_split(samples, SLICES):
        power = numpy.abs(numpy.fft.rfft(piece * numpy.hanning(len(piece)))) ** 2
        edges = numpy.unique(numpy.geomspace(1, len(power), BANDS + 1).astype(int))
        bands = numpy.add.reduceat(power, edges[:-1])
        rows.append(10 * numpy.log10(numpy.resize(bands, BANDS) + 1e-9))
    return numpy.concatenate(rows)


class Regressor:
    """Ridge regression on random cosines of the input: a smooth function, fitted at one stroke."""

    def __init__(self, inputs, targets, ridge=0.1):
        random = numpy.random.default_rng(1)
        self.mean, self.spread = inputs.mean(0), inputs.std(0) + 1e-6
        count = inputs.shape[1]
        self.weights = random.normal(0, 0.5 / numpy.sqrt(count), (count, FEATURES))
        self.phases = random.uniform(0, 2 * numpy.pi, FEATURES)
        hidden = self.hidden(inputs)
        self.centre = targets.mean(0)
        square = hidden.T @ hidden + ridge * numpy.eye(hidden.shape[1])
        self.output = numpy.linalg.solve(square, hidden.T @ (targets - self.centre))

    def hidden(self, inputs):
        scaled = (inputs - self.mean) / self.spread
        return numpy.cos(scaled @ self.weights + self.phases)

    def __call__(self, inputs):
        return self.hidden(inputs) @ self.output + self.centre


def shareExplained(truth, found):
    """1 for a perfect answer, 0 for the mean."""
    return 1 - ((truth - found) ** 2).sum(0) / ((truth - truth.mean(0)) ** 2).sum(0)


def draw(path, names, truth, found, explained):
    """Found against true values, a panel for each parameter."""
    size, gap = 240, 40
    parts = [f'<svg xmlns="http://www.w3.org/2000/svg" width="{len(names) * (size + gap) + gap}" '
             f'height="{size + 2 * gap}" font-family="sans-serif" font-size="13">',
             '<rect width="100%" height="100%" fill="white"/>']
    for i, name in enumerate(names):
        left = gap + i * (size + gap)
        parts.append(f'<rect x="{left}" y="{gap}" width="{size}" height="{size}" fill="none" '
                     f'stroke="black"/><path d="M{left} {gap + size}l{size} {-size}" '
                     f'stroke="silver"/><text x="{left}" y="{gap - 8}">{name}: '
                     f'{100 * explained[i]:.0f} % explained</text>')
        for x, y in zip(truth[:, i], numpy.clip(found[:, i], 0, 1)):
            parts.append(f'<circle cx="{left + size * x:.1f}" cy="{gap + size * (1 - y):.1f}" '
                         'r="2.5" fill="teal" fill-opacity="0.6"/>')
    parts.append('</svg>')
    Path(path).write_text("\n".join(parts) + "\n", encoding="utf-8")


def main():
    parser = argparse.ArgumentParser(description=__doc__,
                                     formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("folder")
    parser.add_argument("parameters", nargs="*")
    parser.add_argument("-o", "--output", default="learned.svg")
    options = parser.parse_args()
    varied = list(json.loads(Path(options.folder, "manifest.json").read_text("utf-8"))["vary"])
    names = (options.parameters or varied)[:3]
    labels, inputs = [], []
    for label, samples in soundsOf(options.folder):
        labels.append(label)
        inputs.append(spectrumOf(samples))
    inputs = numpy.array(inputs)
    targets = numpy.array([[label["normalised"][name] for name in names] for label in labels])
    isTest = numpy.array([label["split"] == "test" for label in labels])
    found = Regressor(inputs[~isTest], targets[~isTest])(inputs[isTest])
    explained = shareExplained(targets[isTest], found)
    for name, share in zip(names, explained):
        print(f"{name}: {100 * share:.0f} % explained, in {isTest.sum()} test sounds")
    draw(options.output, names, targets[isTest], found, explained)


if __name__ == "__main__":
    main()
