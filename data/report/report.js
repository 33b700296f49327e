// Searching and paging of the report's long tables. Without scripts the page shows their first rows.
"use strict";
(() => {
  const pageRows = 200;
  const words = JSON.parse(document.getElementById("words").textContent);
  const filled = (text, ...values) => text.replace(/\{(\d)\}/g, (_, i) => values[i]);

  // "681096.80" reads 681,096.80
  const grouped = (text) => text.replace(/^(-?)(\d+)/, (_, sign, digits) => sign + digits.replace(/\B(?=(\d{3})+$)/g, ","));

  function tableOf(section) {
    const data = section.querySelector("script");
    const body = section.querySelector("tbody");
    const kinds = section.dataset.kinds.split(" ");
    const rows = data ? JSON.parse(data.textContent)
      : [...body.rows].map((row) => [...row.cells].slice(0, kinds.length).map((cell) => cell.dataset.raw ?? cell.textContent));
    return {section, body, kinds, rows, static: data ? null : [...body.rows], lower: null, shown: rows.map((_, i) => i), page: 0};
  }

  function cell(kind, text) {
    const td = document.createElement("td");
    if (kind === "verdict") {
      td.className = "k";
      if (text) {
        const mark = document.createElement("span");
        mark.className = "mark " + text;
        mark.textContent = text;
        td.append(mark);
      }
    } else {
      td.className = kind === "text" ? "t" : kind === "code" ? "c" : "n";
      td.textContent = kind === "text" || kind === "code" ? text : grouped(text);
    }
    return td;
  }

  // A row below a wrong account without a code of its own belongs to it: the total of its auxiliaries.
  function wrongRows(table, verdict) {
    let inside = false;
    return table.rows.map((row) => (inside = row[verdict] === "X" || (inside && row[0] === "")));
  }

  function draw(table) {
    const first = table.page * pageRows;
    const at = table.shown.slice(first, first + pageRows);
    const verdict = table.kinds.indexOf("verdict");
    table.body.replaceChildren(...at.map((i) => {
      if (table.static) return table.static[i];
      const row = document.createElement("tr");
      if (verdict >= 0 && table.rows[i][verdict] === "X") row.className = "wrong";
      else if (verdict >= 0 && table.rows[i][0] === "") row.className = "sum";
      row.append(...table.rows[i].map((text, c) => cell(table.kinds[c], text)));
      return row;
    }));
    if (at.length === 0) {
      const row = table.body.insertRow();
      row.insertCell().textContent = words.noMatch;
      row.cells[0].colSpan = table.kinds.length;
    }
    table.range.textContent = filled(words.range, at.length ? first + 1 : 0, first + at.length, table.shown.length);
    table.previous.disabled = table.page === 0;
    table.next.disabled = first + pageRows >= table.shown.length;
    table.previous.hidden = table.next.hidden = table.shown.length <= pageRows;
  }

  function element(name, properties, ...children) {
    const made = Object.assign(document.createElement(name), properties);
    made.append(...children);
    return made;
  }

  for (const section of document.querySelectorAll("section[data-kinds]")) {
    const table = tableOf(section);
    const tools = section.querySelector(".tools");
    const verdict = table.kinds.indexOf("verdict");
    const search = element("input", {type: "search", placeholder: words.search, ariaLabel: words.search});
    const only = element("input", {type: "checkbox"});
    table.range = element("span", {});
    table.previous = element("button", {type: "button", textContent: words.previous});
    table.next = element("button", {type: "button", textContent: words.next});
    const wrong = verdict >= 0 ? wrongRows(table, verdict) : null;
    const filter = () => {
      const asked = search.value.trim().toLowerCase();
      table.lower ??= table.rows.map((row) => row.join("\t").toLowerCase());
      table.shown = [];
      for (let i = 0; i < table.rows.length; ++i)
        if ((!wrong || !only.checked || wrong[i]) && (!asked || table.lower[i].includes(asked))) table.shown.push(i);
      table.page = 0;
      draw(table);
    };
    search.addEventListener("input", filter);
    only.addEventListener("change", filter);
    table.previous.addEventListener("click", () => { --table.page; draw(table); });
    table.next.addEventListener("click", () => { ++table.page; draw(table); });
    tools.append(search);
    if (wrong && wrong.includes(true)) tools.append(element("label", {}, only, words.onlyWrong));
    tools.append(element("span", {className: "pages"}, table.previous, table.range, table.next));
    tools.hidden = false;
    section.querySelector(".first-rows")?.remove();
    draw(table);
  }
})();
