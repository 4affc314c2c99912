// What can be undone: states of the sound, as texts.

const most = 200;

export class History {
    constructor(state) {
        this.states = [state];
        this.at = 0;
    }

    // A new state; what had been undone is gone. Returns false when it is the one that is there.
    add(state) {
        if (state === this.states[this.at]) return false;
        this.states = [...this.states.slice(Math.max(this.at + 2 - most, 0), this.at + 1), state];
        this.at = this.states.length - 1;
        return true;
    }

    canMove(by) {
        return this.states[this.at + by] !== undefined;
    }

    // The state before (-1) or after (1).
    move(by) {
        this.at += by;
        return this.states[this.at];
    }
}
