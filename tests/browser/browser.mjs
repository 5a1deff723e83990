// A browser, a folder with what orvelcs writes, and what all tests ask of a page.
import assert from "node:assert/strict";
import {execFileSync} from "node:child_process";
import {mkdtempSync, rmSync} from "node:fs";
import {createRequire} from "node:module";
import {tmpdir} from "node:os";
import {join} from "node:path";
import {pathToFileURL} from "node:url";

const {ORVELCS_PROGRAM: program, BROWSER_PROGRAM: browserProgram, BROWSER_PACKAGES: packages} = process.env;
const {chromium} = createRequire(join(packages, "package.json"))("playwright-core");

export const windowSizes = [[360, 740], [768, 1024], [1280, 800], [1920, 1080]].map(([width, height]) => ({width, height}));
export const folder = mkdtempSync(join(tmpdir(), "orvel-browser-"));

export function orvelcs(...words) {
    return execFileSync(program, words, {cwd: folder, encoding: "utf8"});
}

/// The distance between two candidates as the command states it at a place; null where there is none.
export function comparedDistance(source, target, between, latitude, longitude) {
    const words = ["transformation", "compare", source, target, "--between", ...between, `--at=${latitude},${longitude}`];
    return JSON.parse(orvelcs("--quiet", "--json", ...words)).candidates[1].distance;
}

let browser;

export async function start() {
    const flags = ["--no-sandbox", "--disable-gpu", "--disable-quic", "--no-first-run", "--disable-background-networking",
                   "--disable-component-update", "--disable-sync"];
    browser = await chromium.launch({executablePath: browserProgram, args: flags});
}

export async function stop() {
    await browser?.close();
    rmSync(folder, {recursive: true, force: true});
}

/// Calls the function with the page in every size of the window, in light and in dark.
export async function inEveryWindow(page, check) {
    for (const colorScheme of ["light", "dark"]) {
        await page.emulateMedia({colorScheme});
        for (const size of windowSizes) {
            await page.setViewportSize(size);
            await check(size, colorScheme);
        }
    }
}

/// Opens a file of the folder. Whatever the page logs as an error or loads besides itself fails the test at `close`.
export async function open(name) {
    const context = await browser.newContext({viewport: windowSizes[2]});
    const page = await context.newPage();
    const faults = [];
    const url = pathToFileURL(join(folder, name)).href;
    page.on("console", message => ["error", "warning"].includes(message.type()) && faults.push(message.text()));
    page.on("pageerror", error => faults.push(String(error)));
    page.on("request", request => request.url() !== url && !request.url().startsWith("data:") && faults.push(request.url()));
    await page.goto(url);
    return {page, close: async () => {
        await context.close();
        assert.deepEqual(faults, []);
    }};
}

/// The boxes of all elements that the selector finds and that are shown, with their texts.
export function boxes(page, selector) {
    return page.$$eval(selector, elements => elements.map(element => {
        const {left, top, right, bottom} = element.getBoundingClientRect();
        return {text: element.textContent, left, top, right, bottom};
    }).filter(box => box.right > box.left && box.bottom > box.top));
}

export function assertApart(all) {
    const tolerance = 0.5; // of boxes, which are larger than the letters in them
    const meets = (box, other) => box.left < other.right - tolerance && other.left < box.right - tolerance &&
        box.top < other.bottom - tolerance && other.top < box.bottom - tolerance;
    for (const [index, box] of all.entries()) {
        const covered = all.slice(index + 1).find(other => meets(box, other));
        assert.ok(!covered, `"${box.text}" covers "${covered?.text}": ${JSON.stringify([box, covered])}`);
    }
}

export async function assertInside(page, all, selector) {
    const [outer] = await boxes(page, selector);
    for (const box of all)
        assert.ok(box.left >= outer.left - 1 && box.right <= outer.right + 1 && box.top >= outer.top - 1 && box.bottom <= outer.bottom + 1,
                  `"${box.text}" ${JSON.stringify(box)} leaves ${selector} ${JSON.stringify(outer)}`);
}

/// The page scrolls in no direction but down.
export async function assertFits(page) {
    const [needed, width] = await page.evaluate(() => [document.documentElement.scrollWidth, innerWidth]);
    assert.ok(needed <= width, `the page needs a width of ${needed} in a window of ${width}`);
}
