// How a knob turns, as in the editor: values from 0 to 1, places in pixels from the knob's centre,
// y downwards.

const fullTurn = 1.5 * Math.PI; // three quarters of a circle, with the gap at the bottom
const linePixels = 200; // for the whole range; with Shift half as many more
const fineLinePixels = 300;
const clamp = value => Math.min(Math.max(value, 0), 1);

export const pictures = 30;
export const middle = 0.5; // what Ctrl+click sets

// The picture of the strip that shows `value`: the last one is for the upper end alone.
export const pictureOf = value => Math.floor(Math.fround(value) * (pictures - 1));

export function valueAt(x, y) {
    let angle = Math.atan2(y, x) + Math.PI / 2; // from straight up, where the value is one half
    if (angle >= Math.PI) angle -= 2 * Math.PI;
    return clamp(0.5 + angle / fullTurn);
}

// One notch of the wheel; up is positive.
export const wheelStep = (value, notches, isFine) => clamp(value + notches * (isFine ? 0.01 : 0.1));

// A drag from the press at {x, y} on, with the value at that time; Alt takes the straight way.
export class Drag {
    constructor(value, place, keys) {
        this.isCircular = !keys.altKey;
        this.before = value;
        this.reference = valueAt(place.x, place.y);
        this.anchor = place;
        this.anchorValue = value;
        this.isFine = keys.shiftKey;
    }

    to(place, keys) {
        return this.isCircular ? this.around(place) : this.straight(place, keys);
    }

    // A drag through the gap would throw the knob from one end to the other: it stays at its end.
    around(place) {
        const target = valueAt(place.x, place.y);
        if (this.reference - target > 0.5) return 1;
        if (target - this.reference > 0.5) return 0;
        this.reference = target;
        return target;
    }

    // From the anchor, so that a pointer that comes back brings the value back with it. A change of
    // Shift sets a new anchor: the value does not jump.
    straight(place, keys) {
        const way = place.x - this.anchor.x - (place.y - this.anchor.y);
        const target = clamp(this.anchorValue + way / (this.isFine ? fineLinePixels : linePixels));
        if (keys.shiftKey !== this.isFine) {
            this.anchor = place;
            this.anchorValue = target;
            this.isFine = keys.shiftKey;
        }
        return target;
    }
}
