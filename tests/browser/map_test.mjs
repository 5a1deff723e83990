// The picture and the page of a map.
import assert from "node:assert/strict";
import {after, before, test} from "node:test";
import {assertApart, assertFits, assertInside, boxes, inEveryWindow, open, orvelcs, start, stop} from "./browser.mjs";

const zones = Array.from({length: 120}, (_, index) => `EPSG:32${index < 60 ? 6 : 7}${String(index % 60 + 1).padStart(2, "0")}`);

before(async () => {
    orvelcs("--quiet", "map", ...zones, "-o", "zones.html");
    orvelcs("--quiet", "map", "EPSG:25832", "EPSG:2154", "EPSG:31467", "EPSG:3832", "LOCAL:METRE", "-o", "few.html");
    await start();
});
after(stop);

test("PictureOfAllZones_HasLabelsInsideThatDoNotMeet", async () => {
    orvelcs("--quiet", "map", ...zones, "-o", "zones.svg");
    const {page, close} = await open("zones.svg");
    await inEveryWindow(page, async () => {
        const numbers = await boxes(page, "rect.on-map");
        assert.equal(numbers.length, zones.length);
        assertApart(numbers);
        const labels = await boxes(page, "text");
        assertApart(labels);
        await assertInside(page, labels, "svg");
    });
    await close();
});

test("PageOfAMap_FitsEveryWindowInLightAndInDark", async () => {
    const {page, close} = await open("zones.html");
    await inEveryWindow(page, async () => {
        await assertFits(page);
        const labels = await boxes(page, ".map text");
        assertApart(labels);
        await assertInside(page, labels, ".map svg");
    });
    await close();
});

test("PageOfAMap_LeadsFromNumbersToEntriesAndBack", async () => {
    const {page, close} = await open("few.html");
    const links = await page.$$eval("svg a", all => all.map(link => [link.id, link.getAttribute("href")]));
    assert.deepEqual(links, [1, 2, 3, 4].map(number => [`area-${number}`, `#system-${number}`]));
    assert.match(await page.textContent(".list li:last-child"), /LOCAL:METRE/);
    await page.hover("#area-2");
    assert.deepEqual(await page.$$eval(".marked", marked => marked.map(part => part.dataset.number)), ["2", "2", "2"]);
    await page.click("#area-3");
    assert.equal(await page.evaluate(() => document.querySelector(":target").id), "system-3");
    await page.click("#system-3 .to-map");
    assert.equal(await page.evaluate(() => document.querySelector(":target").id), "area-3");
    await close();
});

test("PageOfAMap_IsUsedWithTheKeyboardAlone", async () => {
    const {page, close} = await open("few.html");
    const focused = () => page.evaluate(() => document.activeElement.getAttribute("aria-label"));
    await page.keyboard.press("Tab");
    assert.equal(await focused(), "Number 1: EPSG:25832");
    assert.equal(await page.$$eval(".marked", marked => marked.length), 3);
    await page.keyboard.press("Enter");
    assert.equal(await page.evaluate(() => document.querySelector(":target").id), "system-1");
    await page.keyboard.press("Tab");
    assert.equal(await focused(), "Number 1, on the map");
    await page.keyboard.press("Enter");
    assert.equal(await page.evaluate(() => document.querySelector(":target").id), "area-1");
    await close();
});
