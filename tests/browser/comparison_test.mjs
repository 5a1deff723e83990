// The picture and the page of a comparison.
import assert from "node:assert/strict";
import {after, before, test} from "node:test";
import {assertApart, assertFits, assertInside, boxes, comparedDistance, inEveryWindow, open, orvelcs, start, stop} from "./browser.mjs";

const source = "EPSG:4230";
const target = "EPSG:4326";
const compare = ["--quiet", "transformation", "compare", source, target];

before(async () => {
    orvelcs(...compare, "-o", "page.html");
    await start();
});
after(stop);

const valueOf = async page => ({
    ...await page.$eval("#value", value => ({...value.dataset})),
    distance: await page.textContent("#distance"),
    colour: await page.evaluate(() => {
        const {e, f} = document.getElementById("cursor").transform.baseVal[0].matrix;
        const svg = document.querySelector("#map svg");
        const point = svg.createSVGPoint();
        Object.assign(point, {x: e, y: f});
        const band = [...document.querySelectorAll("#bands path")].find(path => path.isPointInFill(point));
        return band?.getAttribute("fill");
    })});

/// What A and B are called: by their codes, else by their names.
const shownPair = page => page.$$eval("tr.A, tr.B", rows => rows
    .sort((one, other) => one.cells[0].textContent < other.cells[0].textContent ? -1 : 1)
    .map(row => row.cells[row.cells[2].textContent === "no code" ? 3 : 2].textContent));

async function assertEqualToCommand(page) {
    const {latitude, longitude, distance, colour} = await valueOf(page);
    const metres = comparedDistance(source, target, await shownPair(page), latitude, longitude);
    assert.equal(distance, metres.toFixed(3) + " m", `at ${latitude}, ${longitude}`);
    const legend = await page.$$eval("#legend span", bands => bands.map(band => [band.textContent, getComputedStyle(band.firstChild).backgroundColor]));
    const [, swatch] = legend.find(([text]) => metres <= Number(text.split(" ")[2]) || text === legend.at(-1)[0]);
    const rgb = [1, 3, 5].map(start => parseInt(colour.slice(start, start + 2), 16));
    assert.equal(swatch, `rgb(${rgb.join(", ")})`, `the colour at ${latitude}, ${longitude}`);
}

async function assertReadable(page) {
    const labels = await boxes(page, "text");
    assert.ok(labels.length > 20);
    assertApart(labels);
    await assertInside(page, labels, "svg");
}

test("PictureOfAComparison_HasLabelsInsideThatDoNotMeet", async () => {
    orvelcs(...compare, "-o", "picture.svg");
    const {page, close} = await open("picture.svg");
    await inEveryWindow(page, () => assertReadable(page));
    await close();
});

test("PictureAcrossTheAntimeridianOrAroundAPole_HasLabelsInsideThatDoNotMeet", async () => {
    for (const systems of [["EPSG:4720", "EPSG:4326"], ["EPSG:3413", "EPSG:4269"]]) {
        orvelcs("--quiet", "transformation", "compare", ...systems, "--force", "-o", "elsewhere.svg");
        const {page, close} = await open("elsewhere.svg");
        await assertReadable(page);
        await close();
    }
});

test("PictureOfAComparison_HasTheColourOfTheLegendAtThePoint", async () => {
    for (const at of ["48,2", "40,20", "60,30"]) {
        const words = ["--json", "--between", "EPSG:1133", "EPSG:1134", `--at=${at}`, "--force", "-o", "at.svg"];
        const {distance} = JSON.parse(orvelcs(...compare, ...words)).candidates[1];
        const {page, close} = await open("at.svg");
        const found = await page.evaluate(() => {
            const sign = document.querySelector("circle.sign");
            const svg = document.documentElement;
            const point = svg.createSVGPoint();
            Object.assign(point, {x: sign.cx.baseVal.value, y: sign.cy.baseVal.value});
            const isUnder = path => path.isPointInFill(point);
            return {
                colour: [...document.querySelectorAll(".bands path")].findLast(isUnder).getAttribute("fill"),
                swatches: [...document.querySelectorAll(".scale-bands rect")].map(rect => rect.getAttribute("fill")),
                bounds: [...document.querySelectorAll(".scale-bands text")].map(text => Number(text.textContent)),
                value: parseFloat([...document.querySelectorAll(".value.bold")].at(-1).textContent)};
        });
        const band = found.bounds.findLastIndex(bound => bound <= found.value);
        assert.equal(found.colour, found.swatches[band], `${found.value} m at ${at}`);
        assert.equal(found.value.toFixed(3), distance.toFixed(3));
        await close();
    }
});

test("PageOfAComparison_FitsEveryWindowInLightAndInDark", async () => {
    const {page, close} = await open("page.html");
    await inEveryWindow(page, async (size, scheme) => {
        await assertFits(page);
        const labels = await boxes(page, "#map .degrees text");
        assertApart(labels);
        await assertInside(page, labels, "#map svg");
        const colour = await page.evaluate(() => getComputedStyle(document.body).backgroundColor);
        assert.equal(colour, scheme === "dark" ? "rgb(18, 23, 29)" : "rgb(255, 255, 255)");
    });
    await close();
});

test("PageOfAComparison_ShowsWhatTheCommandSays", async () => {
    const {page, close} = await open("page.html");
    await assertEqualToCommand(page);
    const map = await page.locator("#map").boundingBox();
    await page.mouse.move(map.x + map.width * 0.4, map.y + map.height * 0.6);
    await assertEqualToCommand(page);
    await page.selectOption("#B", "3");
    await assertEqualToCommand(page);
    await page.selectOption("#A", "4");
    await page.mouse.move(map.x + map.width * 0.55, map.y + map.height * 0.3);
    await assertEqualToCommand(page);
    await close();
});

test("PageOfAComparison_IsUsedWithTheKeyboardAlone", async () => {
    const {page, close} = await open("page.html");
    const focused = () => page.evaluate(() => document.activeElement.id);
    await page.keyboard.press("Tab");
    assert.equal(await focused(), "A");
    await page.keyboard.press("Tab");
    assert.equal(await focused(), "B");
    await page.keyboard.press("ArrowDown");
    const [, second] = await shownPair(page);
    await page.keyboard.press("Tab");
    assert.equal(await focused(), "map");
    const start = await valueOf(page);
    for (const key of ["ArrowUp", "ArrowRight", "Shift+ArrowDown", "Shift+ArrowLeft"])
        await page.keyboard.press(key);
    const end = await valueOf(page);
    assert.ok(Number(end.latitude) < Number(start.latitude) && Number(end.longitude) < Number(start.longitude));
    assert.equal(await page.innerText("#value"), await page.textContent("#spoken"));
    assert.equal((await shownPair(page))[1], second);
    await assertEqualToCommand(page);
    await page.keyboard.press("Home");
    assert.equal((await valueOf(page)).latitude, start.latitude);
    await close();
});

test("PageOfAComparison_ReadsAsATable", async () => {
    const {page, close} = await open("page.html");
    const table = await page.$eval("#distances", table => ({
        caption: table.caption.textContent,
        columns: [...table.tHead.rows[0].cells].slice(1).map(cell => cell.scope),
        rows: [...table.tBodies[0].rows].map(row => row.cells[0].scope),
        place: [table.tBodies[0].rows[4].cells[0].textContent, table.tHead.rows[0].cells[5].textContent],
        value: table.tBodies[0].rows[4].cells[5].textContent}));
    assert.match(table.caption, /^Metres between A, EPSG:1134, and B, EPSG:1133/);
    assert.ok(table.columns.length === 9 && table.columns.every(scope => scope === "col"));
    assert.ok(table.rows.length === 15 && table.rows.every(scope => scope === "row"));
    const [latitude, longitude] = table.place.map(parseFloat);
    assert.equal(table.value, comparedDistance(source, target, ["EPSG:1134", "EPSG:1133"], latitude, longitude).toFixed(3));
    await close();
});
