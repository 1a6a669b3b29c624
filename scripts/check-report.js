"use strict";

// Uses a report as a reader does, and tells what is wrong with it on the console.

function expect(isRight, what) {
    if (!isRight) {
        console.log("Wrong: " + what);
    }
}

const most = 500; // rows of a listing before the reader asks for all

function shownRows(table) {
    return Array.from(table.tBodies[0].rows);
}

/// All rows that the filter leaves, as they are printed.
function allRows(table) {
    window.dispatchEvent(new Event("beforeprint"));
    const rows = shownRows(table);
    window.dispatchEvent(new Event("afterprint"));
    return rows;
}

/// The milliseconds until the action is done and laid out.
function timed(action) {
    const start = performance.now();
    action();
    document.body.getBoundingClientRect();
    return Math.round(performance.now() - start);
}

function tryFilter(table) {
    const input = document.getElementById(table.id + "-filter");
    const all = allRows(table);
    const text = table.tBodies[0].rows[0].cells[0].textContent;
    const times = [text.toUpperCase(), text + " nowhere", ""].map((typed) => {
        input.value = typed;
        const time = timed(() => input.dispatchEvent(new Event("input")));
        const fits = all.filter((row) =>
            typed
                .toLowerCase()
                .split(" ")
                .every((word) => row.textContent.toLowerCase().includes(word)),
        );
        const told = (fits.length === all.length ? "" : fits.length + " of ") + all.length + " rows";
        expect(input.parentElement.textContent.endsWith(told), typed + " isn't told as " + told);
        expect(shownRows(table).length === Math.min(fits.length, most), typed + " leaves " + shownRows(table).length);
        expect(shownRows(table).every((row) => fits.includes(row)), typed + " leaves others");
        return time;
    });
    console.log(table.id + ": " + all.length + " rows, filtered in " + times.join(", ") + " ms");
}

function trySorting(table) {
    const times = [];
    for (const [column, head] of Array.from(table.tHead.rows[0].cells).entries()) {
        const keys = () =>
            allRows(table).map((row) => {
                const text = row.cells[column].textContent;
                return head.classList.contains("number") ? Number(text) : text;
            });
        const isBefore = (a, b) =>
            typeof a === "number" ? a <= b : a.localeCompare(b, undefined, { numeric: true, sensitivity: "base" }) <= 0;
        const button = head.querySelector("button");
        button.focus();
        expect(document.activeElement === button, "a head takes no focus");
        for (const direction of ["ascending", "descending"]) {
            const time = timed(() => button.click());
            expect(head.getAttribute("aria-sort") === direction, button.textContent + " isn't told as " + direction);
            const sorted = direction === "ascending" ? keys() : keys().reverse();
            expect(
                sorted.every((key, place) => place === 0 || isBefore(sorted[place - 1], key)),
                button.textContent + " isn't " + direction,
            );
            times.push(time);
        }
    }
    console.log(table.id + ": sorted in " + Math.min(...times) + " to " + Math.max(...times) + " ms");
}

function luminance([red, green, blue]) {
    const linear = (part) => (part <= 0.04045 ? part / 12.92 : ((part + 0.055) / 1.055) ** 2.4);
    return 0.2126 * linear(red / 255) + 0.7152 * linear(green / 255) + 0.0722 * linear(blue / 255);
}

function colorsIn(text) {
    return text.match(/[\d.]+/g).map(Number);
}

function backgroundOf(element) {
    for (let around = element; around !== null; around = around.parentElement) {
        const color = colorsIn(getComputedStyle(around).backgroundColor);
        if (color.length === 3 || color[3] > 0) {
            return color;
        }
    }
    return [255, 255, 255];
}

function tryContrast() {
    const seen = new Set();
    let lowest = 21;
    for (const element of document.body.querySelectorAll("*:not(script):not(style)")) {
        const hasText = Array.from(element.childNodes).some((node) => node.nodeType === 3 && node.data.trim() !== "");
        const pair = hasText ? getComputedStyle(element).color + backgroundOf(element) : null;
        if (pair !== null && !seen.has(pair)) {
            seen.add(pair);
            const levels = [luminance(colorsIn(getComputedStyle(element).color)), luminance(backgroundOf(element))];
            const ratio = (Math.max(...levels) + 0.05) / (Math.min(...levels) + 0.05);
            lowest = Math.min(lowest, ratio);
            expect(ratio >= 4.5, "contrast of " + ratio + " in " + element.outerHTML.slice(0, 80));
        }
    }
    console.log("lowest contrast " + lowest.toFixed(2) + " of " + seen.size + " pairs of colors");
}

tryContrast();
for (const table of document.querySelectorAll("table.listing")) {
    tryFilter(table);
    trySorting(table);
}
for (const table of document.querySelectorAll("table.listing")) {
    const all = allRows(table).length;
    document.querySelector("#" + table.id.replace("-table", "") + " .more").click();
    expect(shownRows(table).length === all, "not all are shown");
}
console.log("All was tried");
