
(function () {
    "use strict";
    const table = document.querySelector("table.sortable");
    if (table === null) return;
    const body = table.tBodies[0];
    const rows = Array.from(body.rows);
    const heads = Array.from(table.tHead.rows[0].cells);
    const form = document.querySelector("form.filters");
    const shown = document.querySelector("output.shown");
    const collator = new Intl.Collator("en", { numeric: true, sensitivity: "base" });
    const texts = rows.map(function (row) { return row.textContent.toLowerCase().replace(/\s+/g, " "); });

    // The key of a cell: its number if it has one; null if it has no value, which comes last in both directions.
    function keyOf(row, column) {
        const cell = row.cells[column];
        const key = cell.dataset.k;
        if (key === undefined) return cell.textContent === "" ? null : cell.textContent;
        return key === "" ? null : Number(key);
    }

    function compare(a, b) {
        return typeof a === "number" ? a - b : collator.compare(a, b);
    }

    function sortBy(column, head) {
        const descending = head.getAttribute("aria-sort") === "ascending";
        heads.forEach(function (other) { other.removeAttribute("aria-sort"); });
        head.setAttribute("aria-sort", descending ? "descending" : "ascending");
        const keyed = rows.map(function (row) { return { row: row, key: keyOf(row, column) }; });
        keyed.sort(function (a, b) {
            if (a.key === null) return b.key === null ? 0 : 1;
            if (b.key === null) return -1;
            return descending ? compare(b.key, a.key) : compare(a.key, b.key);
        });
        const sorted = document.createDocumentFragment();
        keyed.forEach(function (one) { sorted.append(one.row); });
        body.append(sorted);
    }

    function chosen(name) {
        const control = form.elements[name];
        return control === undefined ? "" : control.value;
    }

    // Each choice lists the values of a row's attribute that it lets through.
    function fits(row, name, choice) {
        return choice === "" ? true : choice.split(" ").includes(row.dataset[name]);
    }

    function filter() {
        const words = chosen("words").toLowerCase().split(/\s+/);
        const choices = ["hdr", "findings", "desk"].map(function (name) { return [name, chosen(name)]; });
        let count = 0;
        rows.forEach(function (row, i) {
            const hasWords = words.every(function (word) { return texts[i].includes(word); });
            const has = choices.every(function (choice) { return fits(row, choice[0], choice[1]); });
            row.hidden = hasWords ? !has : true;
            if (!row.hidden) count += 1;
        });
        shown.value = "Showing " + count + " of " + rows.length;
    }

    heads.forEach(function (head, column) {
        const button = document.createElement("button");
        button.type = "button";
        button.append(...head.childNodes);
        head.append(button);
        button.addEventListener("click", function () { sortBy(column, head); });
    });
    form.hidden = false;
    form.addEventListener("input", filter);
    form.addEventListener("submit", function (event) { event.preventDefault(); });
    filter();
})();
