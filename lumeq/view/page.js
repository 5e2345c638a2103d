"use strict";
// Filters, details and keys. The page's table is complete without it. All text of a run enters the page as text
// and never as markup.
(() => {
  const tables = [...document.querySelectorAll("table.calls")];
  const filters = document.querySelector("form.filters");
  const words = JSON.parse(document.getElementById("words").textContent);
  const blocks = new Map();

  // A line for each call, parsed when it is first needed.
  const detailsOf = (id, index) => {
    if (!blocks.has(id)) blocks.set(id, document.getElementById(id).textContent.split("\n"));
    return JSON.parse(blocks.get(id)[index]);
  };
  const rows = tables.flatMap((table) =>
    [...table.rows].slice(1).map((element, index) => ({ element, index, table })));
  const rowOf = new Map(rows.map((row) => [row.element, row]));
  const isComparison = tables.some((table) => table.classList.contains("compared"));

  const sidesOf = (row) => {
    if (!isComparison) return [detailsOf(row.table.dataset.details, row.index)];
    const { a, b } = row.element.dataset;
    return [a === undefined ? null : detailsOf("data-1", a), b === undefined ? null : detailsOf("data-2", b)];
  };
  const exportOf = (row) => row.element.querySelector(".call b").textContent;
  const hasVerdict = (row, verdict) => row.element.classList.contains(verdict)
    || [...row.element.querySelectorAll(".outcome em")].some((each) => each.textContent === verdict);

  // Building details.

  const make = (tag, content, kind) => {
    const element = document.createElement(tag);
    if (kind) element.className = kind;
    if (typeof content === "string") element.textContent = content;
    else if (content) element.append(...content);
    return element;
  };
  const part = (title, ...content) => make("div", [make("h4", title), ...content]);

  const tree = (value) => {
    const list = make("dl");
    for (const [name, member] of Object.entries(value)) {
      const isTree = member !== null && typeof member === "object";
      list.append(make("dt", name), isTree ? make("dd", Object.keys(member).length ? "" : "empty")
        : make("dd", typeof member === "string" ? member : JSON.stringify(member)));
      if (isTree && Object.keys(member).length) list.append(tree(member));
    }
    return list;
  };
  const refusedText = ({ text, at }) => {
    const characters = Array.from(text);
    const rest = characters.slice(at + 1).join("");
    return make("code", [characters.slice(0, at).join(""), make("mark", characters[at] ?? " "), rest]);
  };
  const reason = (its) => {
    const item = make("li", `${its.message}, by the ${its.layer}`);
    if (its.words) {
      if (its.text) item.append(make("br"), refusedText(its));
      item.append(make("br"), its.words);
      if (its.nearest) item.append(" Nearest: ", make("code", its.nearest));
    }
    return item;
  };
  const logLines = (lines) => make("pre", lines.flatMap(([severity, text]) => [make("span", text, severity), "\n"]));

  const partsOf = (its) => {
    const parts = [];
    if (its.reasons) parts.push(part("Why it is refused", make("ul", its.reasons.map(reason))));
    if (its.arguments) parts.push(part("Arguments", tree(Object.fromEntries(its.arguments))));
    if (its.companion) parts.push(part("What the companion library got", ...its.companion.map(tree)));
    if (its.answer) parts.push(part("What the host got back", tree(its.answer)));
    if (its.remarks) parts.push(part("What the linter notes", make("ul", its.remarks.map((text) => make("li", text)))));
    return parts;
  };
  const side = (its, title) => {
    const columns = make("div", its ? partsOf(its) : [make("p", "No such call.")], "columns");
    const content = title ? [make("h4", title), columns] : [columns];
    if (its?.log) content.push(part("Log", logLines(its.log)));
    return make("div", content);
  };

  const isOpen = (row) => row.element.classList.contains("open");
  const close = (row) => {
    if (!isOpen(row)) return;
    row.element.classList.remove("open");
    row.element.nextElementSibling.remove();
    row.element.querySelector("a").setAttribute("aria-expanded", "false");
  };
  const open = (row) => {
    if (isOpen(row)) return;
    const sides = sidesOf(row);
    const cell = make("td", [make("p", words[exportOf(row)] ?? "", "sentence")]);
    cell.colSpan = row.element.cells.length;
    if (isComparison) cell.append(make("div", [side(sides[0], "A"), side(sides[1], "B")], "sides"));
    else {
      if (sides[0].line) cell.firstChild.append(` Line ${sides[0].line} of the session.`);
      cell.append(side(sides[0]));
    }
    const details = make("tr", [cell], "details");
    details.hidden = row.element.hidden;
    row.element.after(details);
    row.element.classList.add("open");
    row.element.querySelector("a").setAttribute("aria-expanded", "true");
  };
  const toggle = (row) => (isOpen(row) ? close(row) : open(row));

  // Filters.

  const stringsIn = (value) => (value === null || typeof value !== "object" ? [String(value)]
    : Object.values(value).flatMap(stringsIn));
  const searchTextOf = (row) => {
    row.searchText ??= [row.element.textContent, ...sidesOf(row).flatMap((its) => stringsIn(its))].join("\n").toLowerCase();
    return row.searchText;
  };
  const applyFilters = () => {
    const text = filters.elements.text.value.trim().toLowerCase();
    const wantedExport = filters.elements.export.value;
    const wantedVerdict = filters.elements.verdict.value;
    let shown = 0;
    const groups = new Set();
    for (const row of rows) {
      const fits = (!wantedExport || exportOf(row) === wantedExport)
        && (!wantedVerdict || hasVerdict(row, wantedVerdict))
        && (!text || searchTextOf(row).includes(text));
      if (row.element.hidden === fits) {
        row.element.hidden = !fits;
        if (isOpen(row)) row.element.nextElementSibling.hidden = !fits;
      }
      shown += fits;
      if (fits) groups.add(row.element.parentElement);
    }
    for (const table of tables) for (const group of table.tBodies) group.hidden = !groups.has(group);
    filters.querySelector("output").textContent =
      shown === rows.length ? `${rows.length} calls` : `${shown} of ${rows.length} calls`;
  };
  const setUpFilters = () => {
    filters.hidden = false;
    let waiting = 0;
    filters.addEventListener("input", () => {
      clearTimeout(waiting);
      waiting = setTimeout(applyFilters, 80);
    });
    filters.addEventListener("reset", () => setTimeout(applyFilters));
    filters.addEventListener("submit", (event) => event.preventDefault());
    applyFilters();
  };

  // Links and keys.

  const rowAt = (node) => rowOf.get(node?.closest?.("table.calls > tbody > tr:not(.details)"));
  const followLink = () => {
    const row = rowAt(document.getElementById(location.hash.slice(1)));
    if (!row) return;
    if (row.element.hidden) {
      filters.reset();
      applyFilters();
    }
    open(row);
    row.element.scrollIntoView({ block: "center" });
    // Following the link has moved the focus away.
    row.element.querySelector("a").focus({ preventScroll: true });
  };
  document.addEventListener("click", (event) => {
    const row = rowAt(event.target);
    if (!row || String(getSelection())) return;
    const isLink = event.target.closest("a");
    if (!isLink || isOpen(row)) toggle(row);
    else if (location.hash === isLink.hash) open(row);
  });
  addEventListener("hashchange", followLink);

  const move = (step) => {
    const visible = rows.filter((row) => !row.element.hidden);
    if (!visible.length) return;
    const at = visible.indexOf(rowAt(document.activeElement));
    const next = at < 0 ? (step > 0 ? 0 : visible.length - 1) : Math.min(Math.max(at + step, 0), visible.length - 1);
    visible[next].element.querySelector("a").focus();
    visible[next].element.scrollIntoView({ block: "nearest" });
  };
  document.addEventListener("keydown", (event) => {
    if (event.ctrlKey || event.metaKey || event.altKey) return;
    const isTyping = event.target.closest("input, select, textarea");
    if (event.key === "Escape") {
      if (isTyping) event.target.blur();
      else rows.forEach(close);
    } else if (isTyping) {
      return;
    } else if (event.key === "/") {
      event.preventDefault();
      filters.elements.text.focus();
    } else if (event.key === "j" || event.key === "ArrowDown" && rowAt(document.activeElement)) {
      event.preventDefault();
      move(1);
    } else if (event.key === "k" || event.key === "ArrowUp" && rowAt(document.activeElement)) {
      event.preventDefault();
      move(-1);
    }
  });

  // Not for ten thousand links at once.
  document.addEventListener("focusin", ({ target }) => {
    const row = rowAt(target);
    if (row && target.closest("a")) target.setAttribute("aria-expanded", String(isOpen(row)));
  });
  setUpFilters();
  followLink();
})();
