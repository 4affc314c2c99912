"use strict";
const stops = [...document.querySelectorAll("article")];
const find = document.getElementById("find");
const kept = document.getElementById("kept");
const chips = [...document.querySelectorAll("[data-tag]")];
const audioOf = stop => stop.querySelector("audio");
const lineOf = new Map(stops.map(stop => [stop, document.querySelector(`nav a[href="#${CSS.escape(stop.id)}"]`)]));
const shown = () => stops.filter(stop => !stop.hidden);
let chosen = null;

// What the script does is shown; the browser's own players are for pages without it.
document.body.classList.remove("unscripted");
for (const stop of stops) audioOf(stop).controls = false;

function tell(text) {
    document.getElementById("told").textContent = text;
}

// The program that the keys act on.
function choose(stop) {
    if (chosen) lineOf.get(chosen).removeAttribute("aria-current");
    chosen = stop;
    const line = lineOf.get(stop);
    line.setAttribute("aria-current", "true");
    const list = line.closest("ol");
    const top = line.offsetTop - list.offsetTop;
    if (top < list.scrollTop || top + line.offsetHeight > list.scrollTop + list.clientHeight)
        list.scrollTop = top - list.clientHeight / 2;
}

function visit(stop) {
    stop.focus({ preventScroll: true });
    stop.scrollIntoView({ block: "nearest" });
}

// Before a sound has been loaded its length is known all the same.
const lengthOf = audio => audio.duration || Number(audio.dataset.seconds);

function moveTo(stop, seconds) {
    const audio = audioOf(stop);
    audio.currentTime = Math.min(Math.max(seconds, 0), lengthOf(audio));
    showPlace(stop);
}

function showPlace(stop) {
    const audio = audioOf(stop);
    const head = stop.querySelector(".head");
    head.hidden = false;
    head.style.left = 100 * audio.currentTime / lengthOf(audio) + "%";
}

function start(stop) {
    audioOf(stop).play().catch(error => {
        if (error.name !== "AbortError") tell(`This browser cannot play ${stop.dataset.name}.`);
    });
}

function toggle(stop) {
    if (audioOf(stop).paused) start(stop);
    else audioOf(stop).pause();
}

// One sound at a time, with its place in the pictures.
function follow(stop) {
    const audio = audioOf(stop);
    const head = stop.querySelector(".head");
    const button = stop.querySelector(".play");
    const draw = () => {
        showPlace(stop);
        if (!audio.paused) requestAnimationFrame(draw);
    };
    const show = plays => {
        stop.classList.toggle("plays", plays);
        button.querySelector("span").textContent = plays ? "Pause" : "Play";
        button.setAttribute("aria-label", `${plays ? "Pause" : "Play"} ${stop.dataset.name}`);
    };
    audio.addEventListener("play", () => {
        for (const other of stops) if (other !== stop) audioOf(other).pause();
        choose(stop);
        show(true);
        draw();
    });
    audio.addEventListener("pause", () => show(false));
    audio.addEventListener("seeking", draw);
    audio.addEventListener("ended", () => {
        head.hidden = true;
        const next = shown()[shown().indexOf(stop) + 1];
        if (!next || !document.getElementById("onward").checked) return;
        visit(next);
        start(next);
    });
    button.addEventListener("click", () => toggle(stop));
    const pictures = stop.querySelector(".pictures");
    pictures.addEventListener("click", event => {
        const place = pictures.getBoundingClientRect();
        moveTo(stop, lengthOf(audio) * (event.clientX - place.left) / place.width);
        start(stop);
    });
    stop.addEventListener("focusin", () => choose(stop));
}
stops.forEach(follow);

// Favourites are kept by name. A browser may refuse to keep anything for a page from a file; they
// then last until the page is closed.
const storageKey = "zelvatone tour " + document.title;
const favourites = new Set();
try {
    for (const name of JSON.parse(localStorage.getItem(storageKey)) || []) favourites.add(name);
} catch (error) { /* nothing kept */ }

function showFavourites() {
    for (const stop of stops) {
        const isOne = favourites.has(stop.dataset.name);
        stop.querySelector(".star").setAttribute("aria-pressed", isOne);
        lineOf.get(stop).classList.toggle("kept", isOne);
    }
    kept.querySelector("span").textContent = stops.filter(stop => favourites.has(stop.dataset.name)).length;
}

for (const stop of stops) {
    stop.querySelector(".star").addEventListener("click", () => {
        const name = stop.dataset.name;
        if (!favourites.delete(name)) favourites.add(name);
        try {
            localStorage.setItem(storageKey, JSON.stringify([...favourites]));
        } catch (error) { /* until the page is closed */ }
        showFavourites();
    });
}
showFavourites();

// Each word that is typed and each pressed button leaves fewer programs.
const isPressed = button => button.getAttribute("aria-pressed") === "true";
function sift() {
    const words = find.value.trim().toLowerCase().split(/\s+/);
    const tags = chips.filter(isPressed).map(chip => chip.dataset.tag);
    for (const stop of stops) {
        const own = stop.dataset.tags.split(" ");
        const text = `${stop.dataset.name} ${stop.dataset.tags}`.toLowerCase();
        stop.hidden = !(words.every(word => text.includes(word)) && tags.every(tag => own.includes(tag)) &&
            (!isPressed(kept) || favourites.has(stop.dataset.name)));
        lineOf.get(stop).parentElement.hidden = stop.hidden;
    }
    document.getElementById("found").value = `${shown().length} of ${stops.length}`;
    document.getElementById("none").hidden = shown().length > 0;
}
find.addEventListener("input", sift);
for (const button of [kept, ...chips]) {
    button.addEventListener("click", () => {
        button.setAttribute("aria-pressed", !isPressed(button));
        sift();
    });
}
function showAll() {
    find.value = "";
    for (const button of [kept, ...chips]) button.setAttribute("aria-pressed", false);
    sift();
}
document.getElementById("all").addEventListener("click", () => {
    showAll();
    find.focus();
});

// The clipboard's own interface is missing on pages that are not secure.
async function copy(text) {
    try {
        await navigator.clipboard.writeText(text);
        return true;
    } catch (error) {
        const field = document.createElement("textarea");
        field.value = text;
        document.body.append(field);
        field.select();
        const isCopied = document.execCommand("copy");
        field.remove();
        return isCopied;
    }
}
for (const button of document.querySelectorAll(".copy")) {
    const words = button.textContent;
    button.addEventListener("click", async () => {
        const stop = button.closest("article");
        const isCopied = await copy(stop.querySelector("code").textContent);
        button.focus({ preventScroll: true });
        button.textContent = isCopied ? "Copied" : "Not copied";
        tell(isCopied ? `The command for ${stop.dataset.name} is copied.` : "The browser does not let this page copy.");
        setTimeout(() => { button.textContent = words; }, 1500);
    });
}

// Beside the list the index is open, above it closed.
const wide = matchMedia("(min-width: 60rem)");
const openIndex = () => { document.getElementById("index").open = wide.matches; };
openIndex();
if (wide.addEventListener) wide.addEventListener("change", openIndex);

function step(by) {
    const list = shown();
    if (list.length === 0) return;
    const at = list.indexOf(chosen);
    const next = at < 0 ? 0 : Math.min(Math.max(at + by, 0), list.length - 1);
    visit(list[next]);
}

const keys = {
    ArrowDown: () => step(1),
    ArrowUp: () => step(-1),
    ArrowLeft: () => { if (chosen) moveTo(chosen, audioOf(chosen).currentTime - 0.5); },
    ArrowRight: () => { if (chosen) moveTo(chosen, audioOf(chosen).currentTime + 0.5); },
    " ": () => {
        if (!chosen || chosen.hidden) step(0);
        if (chosen && !chosen.hidden) toggle(chosen);
    },
    "/": () => find.focus(),
};
document.addEventListener("keydown", event => {
    if (event.ctrlKey || event.altKey || event.metaKey || event.shiftKey && event.key !== "/") return;
    if (event.target === find) {
        if (event.key === "ArrowDown") {
            event.preventDefault();
            chosen = null;
            step(0);
        } else if (event.key === "Escape") showAll();
        return;
    }
    // A button, a link or a box does with space what it always does.
    if (event.key === " " && event.target.closest("button, a, input, summary")) return;
    if (keys[event.key]) {
        event.preventDefault();
        keys[event.key]();
    }
});
