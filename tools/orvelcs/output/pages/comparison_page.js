"use strict";
// Shows the distances between two candidates on the map, in the legend and in the table.

const data = JSON.parse(document.getElementById("data").textContent);
const columns = data.longitudes.length;
const rows = data.latitudes.length;
const kMissing = -1; // of a distance, and of a node that is not on the map

const byId = id => document.getElementById(id);
const svg = document.querySelector("#map svg");
const choices = {A: byId("A"), B: byId("B")};

// Reads numbers as encodeField wrote them.
function decodeField(text) {
    const bytes = Uint8Array.from(atob(text), character => character.charCodeAt(0));
    const numbers = new Float64Array(rows * columns);
    let next = 0;
    for (let index = 0; index < numbers.length; ++index) {
        let rest = 0;
        let weight = 1;
        for (; bytes[next] >= 128; weight *= 128)
            rest += (bytes[next++] - 128) * weight;
        rest += bytes[next++] * weight;
        const west = index % columns > 0 ? numbers[index - 1] : 0;
        const south = index >= columns ? numbers[index - columns] : 0;
        const southwest = index % columns > 0 && index >= columns ? numbers[index - columns - 1] : 0;
        numbers[index] = west + south - southwest + (rest % 2 === 0 ? rest / 2 : -(rest + 1) / 2);
    }
    return numbers;
}

const nodes = {x: decodeField(data.x).map(tenths => tenths / 10), y: decodeField(data.y).map(tenths => tenths / 10)};
const isOnMap = node => nodes.x[node] >= 0;

const state = {first: 0, second: 1, node: 0, pair: null, millimetres: null};

function pairIndex(first, second) {
    const [low, high] = first < second ? [first, second] : [second, first];
    return low * (2 * data.candidates.length - low - 1) / 2 + high - low - 1;
}

// "12.345", as orvelcs prints a number of whole millimetres.
function metresText(millimetres) {
    const digits = String(millimetres).padStart(4, "0");
    return digits.slice(0, -3) + "." + digits.slice(-3);
}

// Longitudes go on beyond 180 degrees across the antimeridian.
const wrapped = longitude => longitude > 180 ? Math.round((longitude - 360) * 1e7) / 1e7 : longitude;
const latitudeText = degrees => Math.abs(degrees) + "\u00b0" + (degrees < 0 ? "S" : "N");
const longitudeText = degrees => Math.abs(wrapped(degrees)) + "\u00b0" + (wrapped(degrees) < 0 ? "W" : "E");

function distanceText(node) {
    const millimetres = state.millimetres[node];
    return millimetres === kMissing ? "no position from A or B" : metresText(millimetres) + " m";
}

function showNode() {
    const latitude = data.latitudes[Math.floor(state.node / columns)];
    const longitude = data.longitudes[state.node % columns];
    byId("node").textContent = latitudeText(latitude) + " " + longitudeText(longitude) + ": ";
    byId("distance").textContent = distanceText(state.node);
    const value = byId("value");
    value.dataset.latitude = latitude;
    value.dataset.longitude = wrapped(longitude);
    byId("cursor").setAttribute("transform", `translate(${nodes.x[state.node]} ${nodes.y[state.node]})`);
}

function speakNode() {
    byId("spoken").textContent = byId("node").textContent + byId("distance").textContent;
}

function bandOf(node) {
    const metres = state.millimetres[node] / 1000;
    let band = state.pair.colours.length - 1;
    while (band > 0 && metres < state.pair.bounds[band])
        --band;
    return band;
}

// The corner of cells to the southwest of a node: the middle of the nodes around it.
function cornerAt(row, column) {
    let count = 0;
    let x = 0;
    let y = 0;
    for (const south of [row - 1, row])
        for (const west of [column - 1, column]) {
            const node = south * columns + west;
            if (south < 0 || west < 0 || south >= rows || west >= columns || !isOnMap(node))
                continue;
            ++count;
            x += nodes.x[node];
            y += nodes.y[node];
        }
    return count > 0 ? (x / count).toFixed(1) + " " + (y / count).toFixed(1) : null;
}

const corners = Array.from({length: (rows + 1) * (columns + 1)},
                           (_, index) => cornerAt(Math.floor(index / (columns + 1)), index % (columns + 1)));

// Around the cells of a row from one column to the column before another.
function runPath(row, from, to) {
    const south = row * (columns + 1);
    const north = south + columns + 1;
    const points = [...corners.slice(south + from, south + to + 1), ...corners.slice(north + from, north + to + 1).reverse()];
    return "M" + points.filter(point => point !== null).join("L") + "Z";
}

function drawBands() {
    const paths = state.pair.colours.map(() => "");
    for (let row = 0; row < rows; ++row)
        for (let column = 0, from = 0; column < columns; from = column) {
            const node = row * columns + column;
            const isDrawn = state.millimetres[node] !== kMissing && isOnMap(node);
            const band = isDrawn ? bandOf(node) : kMissing;
            do
                ++column;
            while (isDrawn && column < columns && state.millimetres[row * columns + column] !== kMissing &&
                   isOnMap(row * columns + column) && bandOf(row * columns + column) === band);
            if (isDrawn)
                paths[band] += runPath(row, from, column);
        }
    byId("bands").replaceChildren(...paths.map((path, band) => {
        const element = document.createElementNS(svg.namespaceURI, "path");
        element.setAttribute("fill", state.pair.colours[band]);
        element.setAttribute("d", path);
        return element;
    }));
}

function element(name, text, attributes = {}) {
    const made = document.createElement(name);
    made.textContent = text;
    for (const [attribute, value] of Object.entries(attributes))
        made.setAttribute(attribute, value);
    return made;
}

function bandText(band) {
    const {texts, uniform} = state.pair;
    return uniform ? metresText(state.millimetres.find(number => number !== kMissing)) + " m" : texts[band] + " \u2013 " + texts[band + 1] + " m";
}

function drawLegend() {
    const swatches = state.pair.colours.map((colour, band) => {
        const item = element("span", "");
        const swatch = element("i", "");
        swatch.style.backgroundColor = colour;
        item.append(swatch, bandText(band));
        return item;
    });
    if (state.pair.gaps)
        swatches.push(element("span", "Left blank: A or B gives no position"));
    byId("legend").replaceChildren(...swatches);
}

// Some of the indexes below a count, the first and the last among them.
function spread(count, most) {
    const shown = Math.min(count, most);
    return Array.from({length: shown}, (_, index) => shown > 1 ? Math.round(index * (count - 1) / (shown - 1)) : 0);
}

function drawTable() {
    const shownColumns = spread(columns, 9);
    const head = element("thead", "");
    const headRow = element("tr", "");
    headRow.append(element("td", ""), ...shownColumns.map(
        column => element("th", longitudeText(data.longitudes[column]), {scope: "col"})));
    head.append(headRow);
    const body = element("tbody", "");
    for (const row of spread(rows, 15).reverse()) {
        const line = element("tr", "");
        line.append(element("th", latitudeText(data.latitudes[row]), {scope: "row"}), ...shownColumns.map(column => {
            const millimetres = state.millimetres[row * columns + column];
            return element("td", millimetres === kMissing ? "none" : metresText(millimetres), {class: "number"});
        }));
        body.append(line);
    }
    const caption = element("caption", `Metres between A, ${data.candidates[state.first]}, and B, ` +
        `${data.candidates[state.second]}, at some of the ${rows} by ${columns} nodes of the map`);
    byId("distances").replaceChildren(caption, head, body);
}

function markCandidates() {
    for (const marked of document.querySelectorAll("[data-candidate]")) {
        const number = Number(marked.dataset.candidate);
        const letter = number === state.first ? "A" : number === state.second ? "B" : "";
        marked.classList.toggle("A", letter === "A");
        marked.classList.toggle("B", letter === "B");
        const key = marked.querySelector("td.key");
        if (key)
            key.textContent = letter;
    }
}

function showPair(first, second) {
    Object.assign(state, {first, second, pair: data.pairs[pairIndex(first, second)]});
    state.millimetres = decodeField(state.pair.field);
    choices.A.value = first;
    choices.B.value = second;
    markCandidates();
    drawBands();
    drawLegend();
    drawTable();
    showNode();
}

// Choosing the same candidate twice exchanges the two.
function choose() {
    const first = Number(choices.A.value);
    const second = Number(choices.B.value);
    if (first === second)
        showPair(state.second, state.first);
    else
        showPair(first, second);
    speakNode();
}

function nearestNode(x, y) {
    let nearest = 0;
    let least = Infinity;
    for (let node = 0; node < nodes.x.length; ++node) {
        const square = (nodes.x[node] - x) ** 2 + (nodes.y[node] - y) ** 2;
        if (square < least && isOnMap(node)) {
            least = square;
            nearest = node;
        }
    }
    return nearest;
}

function nodeOfPoint() {
    const nearestIndex = (degrees, wanted) => degrees.reduce(
        (best, number, index) => Math.abs(number - wanted) < Math.abs(degrees[best] - wanted) ? index : best, 0);
    const [latitude, longitude] = data.point;
    const beyond = longitude < data.longitudes[0] ? longitude + 360 : longitude;
    return nearestIndex(data.latitudes, latitude) * columns + nearestIndex(data.longitudes, beyond);
}

function followPointer(event) {
    const point = new DOMPoint(event.clientX, event.clientY).matrixTransform(svg.getScreenCTM().inverse());
    state.node = nearestNode(point.x, point.y);
    showNode();
}

function moveByKey(event) {
    const step = event.shiftKey ? 10 : 1;
    const moves = {ArrowLeft: [0, -step], ArrowRight: [0, step], ArrowDown: [-step, 0], ArrowUp: [step, 0]};
    const clamp = (number, count) => Math.min(Math.max(number, 0), count - 1);
    if (event.key === "Home") {
        state.node = nodeOfPoint();
    } else if (moves[event.key]) {
        const row = clamp(Math.floor(state.node / columns) + moves[event.key][0], rows);
        const column = clamp(state.node % columns + moves[event.key][1], columns);
        state.node = row * columns + column;
    } else {
        return;
    }
    event.preventDefault();
    showNode();
    speakNode();
}

byId("map").addEventListener("keydown", moveByKey);
byId("map").addEventListener("pointermove", followPointer);
byId("map").addEventListener("pointerdown", followPointer);
byId("choice").addEventListener("change", choose);
state.node = nodeOfPoint();
showPair(0, 1);
