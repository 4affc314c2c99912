"use strict";
const stops = [...document.querySelectorAll("article")];
const find = document.getElementById("find");

// One sound at a time, with its place in the pictures.
function follow(stop) {
    const audio = stop.querySelector("audio");
    const head = stop.querySelector(".head");
    const draw = () => {
        head.style.left = 100 * audio.currentTime / audio.duration + "%";
        if (!audio.paused) requestAnimationFrame(draw);
    };
    audio.addEventListener("play", () => {
        for (const other of document.querySelectorAll("audio")) if (other !== audio) other.pause();
        stop.classList.add("plays");
        head.hidden = false;
        draw();
    });
    audio.addEventListener("pause", () => stop.classList.remove("plays"));
    audio.addEventListener("seeked", draw);
    audio.addEventListener("ended", () => {
        head.hidden = true;
        const shown = stops.filter(other => !other.hidden);
        const next = shown[shown.indexOf(stop) + 1];
        if (!next || !document.getElementById("onward").checked) return;
        next.scrollIntoView({ block: "nearest" });
        next.querySelector("audio").play();
    });
    const pictures = stop.querySelector(".pictures");
    pictures.addEventListener("click", event => {
        const place = pictures.getBoundingClientRect();
        audio.currentTime = audio.duration * (event.clientX - place.left) / place.width;
        audio.play();
    });
}
stops.forEach(follow);

find.addEventListener("input", () => {
    const wanted = find.value.trim().toLowerCase();
    for (const stop of stops) stop.hidden = !stop.dataset.name.toLowerCase().includes(wanted);
    const shown = stops.filter(stop => !stop.hidden).length;
    document.getElementById("found").value = `${shown} of ${stops.length}`;
    document.getElementById("none").hidden = shown > 0;
});
document.addEventListener("keydown", event => {
    if (event.key === "/" && event.target !== find) {
        event.preventDefault();
        find.focus();
    }
});
