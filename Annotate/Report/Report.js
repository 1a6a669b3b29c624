"use strict";

// Without this script the report is read as it stands. With it, each listing has a search box above it, and buttons in
// its heads that sort it. Browsers take long to lay out thousands of rows, so a listing shows the first ones until the
// reader wants all, or prints.

const mostAtFirst = 500;
const collator = new Intl.Collator(undefined, { numeric: true, sensitivity: "base" });

class Listing {
    constructor(table) {
        this.table = table;
        this.body = table.tBodies[0];
        this.rows = Array.from(this.body.rows, (row) => ({ row, text: null }));
        this.matching = this.rows;
        this.showsAll = false;
        this.makeFilter();
        this.makeSortable();
        this.show();
        window.addEventListener("beforeprint", () => this.show(Infinity));
        window.addEventListener("afterprint", () => this.show());
    }

    makeFilter() {
        const name = this.table.dataset.name;
        const box = document.createElement("div");
        const label = document.createElement("label");
        this.input = document.createElement("input");
        this.count = document.createElement("output");
        this.more = document.createElement("button");
        box.className = "filter";
        this.input.type = "search";
        this.input.id = this.table.id + "-filter";
        label.htmlFor = this.input.id;
        label.textContent = "Filter the " + name;
        this.more.type = "button";
        this.more.className = "more";
        box.append(label, this.input, this.count);
        const region = this.table.closest(".scrolled");
        region.before(box);
        region.after(this.more);
        this.input.addEventListener("input", () => this.filter());
        this.more.addEventListener("click", () => {
            this.showsAll = true;
            this.show();
        });
    }

    makeSortable() {
        const heads = this.table.tHead.rows[0].cells;
        for (const head of heads) {
            const button = document.createElement("button");
            button.type = "button";
            button.append(...head.childNodes);
            head.append(button);
        }
        this.table.tHead.addEventListener("click", (event) => {
            const head = event.target.closest("button")?.closest("th");
            if (head) {
                const isDescending = head.getAttribute("aria-sort") === "ascending";
                for (const other of heads) {
                    other.removeAttribute("aria-sort");
                }
                head.setAttribute("aria-sort", isDescending ? "descending" : "ascending");
                this.sort(head, isDescending);
            }
        });
    }

    /// Leaves the rows that have each word that is typed.
    filter() {
        const words = this.input.value.toLowerCase().split(/\s+/);
        this.matching = this.rows.filter((each) => {
            each.text ??= Array.from(each.row.cells, (cell) => cell.textContent)
                .join("\n")
                .toLowerCase();
            return words.every((word) => each.text.includes(word));
        });
        this.show();
    }

    sort(head, isDescending) {
        const isNumber = head.classList.contains("number");
        const compare = isNumber ? (a, b) => a - b : collator.compare;
        const keys = new Map();
        for (const each of this.rows) {
            const text = each.row.cells[head.cellIndex].textContent;
            keys.set(each, isNumber ? Number(text) : text);
        }
        this.rows.sort((a, b) => (isDescending ? compare(keys.get(b), keys.get(a)) : compare(keys.get(a), keys.get(b))));
        this.filter();
    }

    show(most = this.showsAll ? Infinity : mostAtFirst) {
        const shown = document.createDocumentFragment();
        for (const { row } of this.matching.slice(0, most)) {
            shown.append(row);
        }
        this.body.replaceChildren(shown);
        const isWhole = this.matching.length === this.rows.length;
        this.count.textContent = (isWhole ? "" : this.matching.length + " of ") + this.rows.length + " rows";
        this.count.className = isWhole ? "quiet whole" : "quiet";
        this.more.textContent = "Show all " + this.matching.length + " rows";
        this.more.hidden = this.matching.length <= most;
    }
}

for (const table of document.querySelectorAll("table.listing")) {
    new Listing(table);
}
