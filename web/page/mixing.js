// A random sound that is one of the family: each knob as one of two programs has it, some of them
// turned a little.

const turnedShare = 0.25; // of the knobs
const furthest = 0.15; // of the range

export function mixed(programs, random = Math.random) {
    const pick = () => programs[Math.floor(random() * programs.length)];
    const [one, other] = [pick(), pick()];
    return Array.from(one, (value, index) => {
        const own = random() < 0.5 ? value : other[index];
        if (random() >= turnedShare) return own;
        return Math.min(Math.max(own + (2 * random() - 1) * furthest, 0), 1);
    });
}
