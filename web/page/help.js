// The help: in a wide window the editor's own pictures, in a narrow one the same texts as text. Both
// stand in one dialog; the pictures' texts are there for assistive technology too.

function element(kind, attributes = {}, ...children) {
    const made = document.createElement(kind);
    for (const [name, value] of Object.entries(attributes)) made.setAttribute(name, value);
    made.append(...children);
    return made;
}

function pageText(page, number) {
    const knobs = page.knobs.flatMap(({ name, range, text }) => [
        element("dt", {}, name, " ", element("i", {}, range)), element("dd", {}, text)]);
    return element("section", { "data-page": number },
        element("h3", {}, page.title), element("p", {}, page.lead), element("dl", {}, ...knobs),
        element("p", { class: "try" }, element("b", {}, "Try"), " ", page.attempt));
}

export class Help {
    constructor(root, layout, pages) {
        this.layout = layout;
        this.pages = pages;
        this.dialog = this.makeDialog();
        this.button = element("button", { type: "button", class: "help", "aria-haspopup": "dialog",
            "aria-label": "Help: what every knob does" }, element("span", { "aria-hidden": "true" }, "?"));
        this.put(this.button, layout.helpButton);
        this.button.addEventListener("click", () => this.open());
        root.append(this.button, this.dialog);
    }

    put(made, [left, top, width, height]) {
        const style = { "--x": left, "--y": top, "--w": width, "--h": height };
        for (const [name, value] of Object.entries(style)) made.style.setProperty(name, value);
        return made;
    }

    makeDialog() {
        this.picture = element("img", { alt: "", width: this.layout.face[2], height: this.layout.face[3] });
        this.areas = this.pages.map((page, index) => {
            const area = element("button", { type: "button", class: "area", "aria-label": page.title });
            area.addEventListener("click", event => {
                event.stopPropagation();
                this.show(index + 1);
            });
            return this.put(area, this.layout.panels[index]);
        });
        this.words = element("div", { class: "words" }, ...this.pages.map((page, i) => pageText(page, i + 1)));
        this.back = element("button", { type: "button", class: "back" }, "Close");
        this.back.addEventListener("click", event => {
            event.stopPropagation();
            this.goBack();
        });
        const dialog = element("dialog", { class: "helping", "aria-label": "Help" }, this.picture,
            ...this.areas, this.words, this.back);
        // Beside the areas a click closes the help, on a page it leads back.
        dialog.addEventListener("click", () => this.goBack());
        dialog.addEventListener("keydown", event => {
            if (event.key !== "Escape") return;
            event.preventDefault();
            this.goBack();
        });
        dialog.addEventListener("close", () => this.button.focus());
        return dialog;
    }

    open() {
        this.show(0);
        this.dialog.showModal();
    }

    // 0 is the index.
    show(page) {
        this.page = page;
        this.dialog.dataset.shown = page;
        this.picture.src = `pictures/${page ? `help${page}` : "helpoverlay"}.png`;
        this.picture.alt = page ? "" : "Five panels: choose one to read about its knobs";
        for (const area of this.areas) area.hidden = page !== 0;
        for (const section of this.words.children) section.classList.toggle("shown", Number(section.dataset.page) === page);
        this.dialog.setAttribute("aria-label", page ? `Help: ${this.pages[page - 1].title}` : "Help");
        this.back.textContent = page ? "Back" : "Close";
        if (this.dialog.open) (page ? this.back : this.areas[0]).focus();
    }

    goBack() {
        const isText = getComputedStyle(this.picture).display === "none";
        if (this.page && !isText) this.show(0);
        else this.dialog.close();
    }
}
