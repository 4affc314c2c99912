"""What the instrument does, in small: the numbers behind every curve in the pictures."""

import math

PRIMES = (2, 3, 5, 7, 11)


def modeSet(
    count, *, base=1.0, falloff=-1.0, parity=0.0, jitter=0.0, extras=0, detune=0.5, power=0.5
):
    """[(frequency, amplitude)], extra modes first as in the note; amplitudes sum to 1."""
    extras = min(extras, count)
    modes = [(base / PRIMES[j] ** detune, power) for j in range(extras)]
    for k in range(1, count - extras + 1):
        odd = k % 2 == 1
        factor = min(1 + parity, 1) if odd else min(1 - parity, 1)
        shift = 0 if k == 1 else (-jitter if odd else jitter)
        modes.append((k * base + shift, k**falloff * factor))
    total = sum(amplitude for _, amplitude in modes)
    if total <= 0:
        return modes
    return [(frequency, amplitude / total) for frequency, amplitude in modes]


def wave(kind, phase):
    """One value of the wave, phase in cycles from 0 up to 1."""
    x = 2 * math.pi * phase
    return {
        "Sine": lambda: math.sin(x),
        "Square": lambda: -1.0 if phase < 0.5 else 1.0,
        "Saw": lambda: 2 * phase - 1,
        "Poly": lambda: 0.7 * math.sin(x) + 0.3 * math.sin(3 * x + 0.5),
        "Son of Poly": lambda: 0.9 * math.sin(x) + 0.1 * math.sin(10 * x + 0.5),
    }[kind]()


def crush(value, bits):
    """The nearest of 2^(bits - 1) + 1 evenly spaced levels from -1 to 1; 0 bits leaves it alone."""
    if bits == 0:
        return value
    steps = 2 ** (bits - 1)
    return math.floor(steps * (value + 1) / 2 + 0.5) / steps * 2 - 1


def chopped(kind, chop, phase):
    """The wave when only its first part is played, stretched over the whole cycle."""
    return wave(kind, chop * (phase % 1.0))


def envelope(time, attack, decay, sustain, release, keyUp):
    """Level at a time in seconds; straight lines, the release starts from the level at key up."""
    if time >= keyUp:
        held = envelope(keyUp - 1e-9, attack, decay, sustain, release, math.inf)
        return max(0.0, held * (1 - (time - keyUp) / release))
    if time < attack:
        return time / attack
    if time < attack + decay:
        return 1 - (1 - sustain) * (time - attack) / decay
    return sustain


def tracks(*, init, shift, least, most, interval, blend, peel, length, step, **spectrum):
    """One path per mode over time: [[(time, frequency, amplitude), ...], ...], times in seconds.

    Every interval the count changes by shift, within least and most. Modes that enter start at
    (1 - peel) times their place; modes that leave slide to (1 + peel) times theirs and fade.
    """
    count, now = init, [list(mode) for mode in modeSet(init, **spectrum)]
    origin, target, begun = [list(m) for m in now], [list(m) for m in now], -math.inf
    paths, due = [[] for _ in now], interval
    for n in range(int(round(length / step)) + 1):
        time = n * step
        if time >= due - 1e-9:
            due += interval
            old, count = count, min(max(count + shift, least), most)
            goal = [list(mode) for mode in modeSet(count, **spectrum)]
            for frequency, _ in goal[len(now) :]:
                now.append([(1 - peel) * frequency, 0.0])
                paths.append([])
            goal += [[(1 + peel) * frequency, 0.0] for frequency, _ in now[count:]]
            origin, target, begun = [list(m) for m in now], goal, time
        share = min((time - begun) / blend, 1.0)
        for i, path in enumerate(paths):
            now[i] = [a + share * (b - a) for a, b in zip(origin[i], target[i])]
            if now[i][1] > 0 or (path and path[-1][2] > 0):
                path.append((time, *now[i]))
    return paths
