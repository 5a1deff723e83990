"use strict";
// Marks an area on the map and its entry in the list together.

function mark(number) {
    for (const part of document.querySelectorAll("[data-number]"))
        part.classList.toggle("marked", part.dataset.number === number);
}

for (const type of ["pointerover", "focusin"])
    document.addEventListener(type, event => {
        const part = event.target.closest("[data-number]");
        mark(part ? part.dataset.number : "");
    });
