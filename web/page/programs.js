// The list of programs, with search and the characters that the tour has measured.

export class Programs {
    // `site` is site.json; `chosen(index)` is called when the user chooses.
    constructor({ programs, site, chosen }) {
        this.programs = programs;
        this.site = site;
        this.chosen = chosen;
        this.find = document.getElementById("find");
        this.list = document.getElementById("list");
        this.items = programs.map(program => this.makeItem(program));
        this.list.append(...this.items);
        this.chips = site.tags.map(tag => this.makeChip(tag)).filter(chip => chip);
        document.getElementById("chips").append(...this.chips);
        this.listen();
        this.sift();
    }

    tagsOf(index) {
        return this.site.programs[index]?.tags ?? [];
    }

    makeItem({ index, name }) {
        const item = document.createElement("li");
        item.setAttribute("role", "option");
        item.id = `program-${index}`;
        item.tabIndex = -1;
        item.dataset.index = index;
        const number = document.createElement("span");
        number.className = "number";
        number.textContent = index;
        const tags = document.createElement("small");
        tags.textContent = this.tagsOf(index).join(", ");
        item.append(number, " ", name, " ", tags);
        return item;
    }

    makeChip({ name, rule }) {
        const count = this.programs.filter(({ index }) => this.tagsOf(index).includes(name)).length;
        if (count === 0) return null;
        const chip = document.createElement("button");
        chip.type = "button";
        chip.setAttribute("aria-pressed", false);
        chip.dataset.tag = name;
        chip.title = rule;
        const number = document.createElement("span");
        number.textContent = count;
        chip.append(name, " ", number);
        chip.addEventListener("click", () => {
            chip.setAttribute("aria-pressed", chip.getAttribute("aria-pressed") !== "true");
            this.sift();
        });
        return chip;
    }

    listen() {
        this.list.addEventListener("click", event => {
            const item = event.target.closest("li");
            if (item) this.choose(item);
        });
        this.list.addEventListener("keydown", event => this.key(event));
        this.find.addEventListener("input", () => this.sift());
        this.find.addEventListener("keydown", event => {
            if (event.key === "ArrowDown" || event.key === "Enter") {
                event.preventDefault();
                if (this.shown().length) this.choose(this.shown()[0]);
            } else if (event.key === "Escape") this.showAll();
        });
        document.getElementById("all").addEventListener("click", () => {
            this.showAll();
            this.find.focus();
        });
    }

    key(event) {
        const shown = this.shown();
        const at = shown.indexOf(document.activeElement);
        const last = shown.length - 1;
        const to = { ArrowDown: at + 1, ArrowUp: at - 1, Home: 0, End: last, PageDown: at + 10, PageUp: at - 10,
            Enter: at, " ": at }[event.key];
        if (to === undefined || event.ctrlKey || event.altKey || event.metaKey || last < 0) return;
        event.preventDefault();
        this.choose(shown[Math.min(Math.max(to, 0), last)]);
    }

    choose(item) {
        this.chosen(Number(item.dataset.index));
        item.focus({ preventScroll: true });
        this.reveal(item);
    }

    // Within the list alone: the page stays where it is.
    reveal(item) {
        const top = item.offsetTop - this.list.offsetTop;
        if (top < this.list.scrollTop || top + item.offsetHeight > this.list.scrollTop + this.list.clientHeight)
            this.list.scrollTop = top - this.list.clientHeight / 2;
    }

    show(index) {
        for (const item of this.items) {
            const isChosen = Number(item.dataset.index) === index;
            item.setAttribute("aria-selected", isChosen);
            item.tabIndex = isChosen ? 0 : -1;
            if (isChosen) this.reveal(item);
        }
        this.keepInReach();
    }

    shown() {
        return this.items.filter(item => !item.hidden);
    }

    // Each word that is typed and each pressed button leaves fewer programs.
    sift() {
        const words = this.find.value.trim().toLowerCase().split(/\s+/);
        const tags = this.chips.filter(chip => chip.getAttribute("aria-pressed") === "true").map(chip => chip.dataset.tag);
        for (const item of this.items) {
            const own = this.tagsOf(item.dataset.index);
            const text = `${this.programs[item.dataset.index].name} ${own.join(" ")}`.toLowerCase();
            item.hidden = !(words.every(word => text.includes(word)) && tags.every(tag => own.includes(tag)));
        }
        const count = this.shown().length;
        document.getElementById("found").value = `${count} of ${this.items.length}`;
        document.getElementById("none").hidden = count > 0;
        this.list.hidden = count === 0;
        this.keepInReach();
    }

    // Tab reaches the list also when the chosen program is not shown.
    keepInReach() {
        const shown = this.shown();
        const chosen = this.items.find(item => item.getAttribute("aria-selected") === "true");
        if (shown.length && !shown.includes(chosen)) shown[0].tabIndex = 0;
    }

    showAll() {
        this.find.value = "";
        for (const chip of this.chips) chip.setAttribute("aria-pressed", false);
        this.sift();
    }

    // The program that stands so far from `index` in the list that is shown.
    neighbour(index, by) {
        const shown = this.shown().map(item => Number(item.dataset.index));
        if (shown.length === 0) return index;
        const at = shown.indexOf(index);
        if (at < 0) return shown[0];
        return shown[(at + by + shown.length) % shown.length];
    }
}
