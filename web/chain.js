// Shows the chain.
"use strict";

const nothing = {positions: []};
let chain = nothing;

const options = () => ({order: at("order").value, comm: at("comm").value, ir: at("ir").value.trim(), trust: at("trust").checked});

function showScan() {
  const text = at("scan").value;
  chain = nothing;
  if (text.trim() === "") {
    ask("identify", "#", "", "JTAG", "", 0);  // forgets the chain
    put(at("answer"));
    at("status").textContent = "Paste a scan, or choose an example.";
    return judgeAgain();
  }
  return attempt(at("answer"), () => {
    at("status").textContent = "";
    if (text.length > most.scan) throw new Trouble("The text is larger than 64 MiB.");
    const {order, comm, ir, trust} = options();
    const answer = ask("identify", text, order, comm, ir, trust ? 1 : 0);
    if (answer.faults) showFaults(answer);
    else showChain(answer);
    return judgeAgain();
  });
}

function showFaults(answer) {
  at("status").textContent = "This scan cannot be read.";
  put(at("answer"), make("ul", {class: "plain", id: "faults"}, answer.faults.map((fault) =>
    make("li", {class: "bad"}, make("button", {type: "button", class: "link", onclick: () => goTo(fault)},
      "Line " + fault.line + ", column " + fault.column), ": " + fault.text)),
    answer.moreFaults ? make("li", {}, "and " + answer.moreFaults + " more") : null));
}

/// Puts the cursor at a fault. Its column counts bytes.
function goTo(fault) {
  const area = at("scan");
  const lines = area.value.split("\n");
  const before = lines.slice(0, fault.line - 1).reduce((sum, line) => sum + line.length + 1, 0);
  const line = lines[fault.line - 1] || "";
  const column = decoder.decode(encoder.encode(line).subarray(0, fault.column - 1)).length;
  area.focus();
  area.setSelectionRange(before + column, before + line.length);
}

function showChain(answer) {
  chain = answer;
  const unknown = answer.count - answer.known;
  at("status").textContent = [count(answer.count, "TAP") + ": " + answer.known + " identified",
    answer.ambiguous ? answer.ambiguous + " ambiguous" : "", unknown ? unknown + " unknown" : ""]
    .filter((part) => part).join(", ") + ".";
  put(at("answer"), answer.scan ? make("p", {class: "soft"}, "Read as: " + answer.scan) : null, make("div", {id: "drawing"}),
    make("p", {class: "lines"}, answer.irLength.trim()), positionTable(answer),
    notes(answer), forms());
  draw();
}

let room = 1;  // how many TAPs a row of the drawing may have

/// Keeps `room`. Asking for the width when it is needed would make the browser lay out the page twice.
function watchWidth() {
  new ResizeObserver(([answer]) => {
    const fits = Math.max(1, Math.floor((answer.contentRect.width - 80) / 236));
    if (fits === room) return;
    room = fits;
    draw();
  }).observe(at("answer"));
}

/// Draws the chain in rows that the page has room for.
function draw() {
  const place = at("drawing");
  if (!place) return;
  if (!chain.isDrawn) return put(place, make("p", {class: "soft"}, "The chain is too long to be drawn."));
  const svg = ask("draw", room).text.replace(/<style>[^]*?<\/style>/, "");
  const drawing = cleaned(new DOMParser().parseFromString(svg, "image/svg+xml").documentElement);
  drawing.setAttribute("role", "img");
  drawing.setAttribute("aria-label", "Drawing of the chain from TDI to TDO. The table below has all of it.");
  put(place, make("figure", {}, drawing));
}

/// A copy of the drawing that has only what it needs: its names come from files.
function cleaned(source) {
  const tags = ["svg", "g", "title", "desc", "rect", "polyline", "text"];
  const attributes = ["class", "font-family", "height", "points", "rx", "text-anchor", "viewBox", "width", "x", "y"];
  const copied = document.createElementNS("http://www.w3.org/2000/svg", source.localName);
  for (const name of attributes) if (source.hasAttribute(name)) copied.setAttribute(name, source.getAttribute(name));
  for (const child of source.childNodes) {
    if (child.nodeType === Node.TEXT_NODE) copied.append(child.data);
    else if (tags.includes(child.localName) && child.getAttribute("fill") !== "#fff") copied.append(cleaned(child));
  }
  return copied;
}

const deviceLink = (device) => make("button", {type: "button", class: "link", onclick: () => lookUp(device.name || device.codeName)},
  device.name || device.codeName);

function positionTable(answer) {
  const heads = ["TAP", "Id", "Device", "Family", "IR", "IDCODE", "BYPASS", "Packages", "Compared"];
  const body = make("tbody", {role: "rowgroup"});
  for (const position of answer.positions) body.append(...positionRows(position, heads));
  return make("div", {},
    make("div", {class: "wide"}, make("table", {class: "cards", role: "table", id: "positions"},
      make("caption", {}, "Positions, in the order of the text"),
      make("thead", {role: "rowgroup"}, make("tr", {role: "row"}, heads.map((head) => make("th", {scope: "col", role: "columnheader"}, head)))),
      body)),
    answer.more ? make("p", {class: "soft"}, "and " + answer.more + " more; plddb identify lists all") : null);
}

function positionRows(position, heads) {
  const match = position.match;
  const detail = !match ? unknownHelp(position) : position.ambiguous ? candidates(position) : null;
  const cells = [
    position.position,
    make("span", {class: "mono"}, position.id || "none"),
    match ? make("span", {}, deviceLink(match), " ", position.ambiguous ? tag("ambiguous", "warn") : "")
      : tag("unknown", "bad"),
    match && match.family, position.irLength,
    match && match.idcodeInstruction, match && match.bypassInstruction,
    match && match.packages.join(" "),
    match && position.ranked.find((one) => one.searchOrder === 1).reason,
  ];
  const row = make("tr", {role: "row", class: detail ? "has-detail" : null}, cells.map((cell, i) => {
    const isEmpty = cell === null || cell === undefined || cell === "";
    const content = isEmpty ? "" : make("span", {}, cell instanceof Node ? cell : String(cell));
    return make(i === 0 ? "th" : "td", i === 0 ? {scope: "row", role: "rowheader", "data-label": heads[i]}
      : {role: "cell", "data-label": isEmpty ? null : heads[i]}, content);
  }));
  return detail ? [row, make("tr", {role: "row", class: "detail"}, make("td", {role: "cell", colspan: heads.length}, detail))] : [row];
}

function candidates(position) {
  return table("More than one device matches. The first in search order is taken; the most exact are first:",
    ["Device", "Family", "IR length", "Compared", "Search order", "File"],
    position.ranked.map((one) => [deviceLink(one), one.family, one.irLength, one.reason, one.searchOrder, one.file]));
}

function unknownHelp(position) {
  const help = position.unknown;
  const maker = help.manufacturer;
  return make("div", {},
    help.misread ? make("p", {class: "warn"}, "Probably misread: it is " + help.misread.id + " (" + help.misread.name + ", " +
      help.misread.family + ") " + help.misread.how + ".") : null,
    help.meaning ? make("p", {}, help.meaning) : null,
    maker ? make("p", {}, "Version " + help.version + ", part number " + help.part + ", manufacturer " + maker.field + " (bank " +
      maker.bank + ", code " + maker.code + "): ", make("strong", {}, maker.maker)) : null,
    help.nearest && help.nearest.length ? table("Nearest devices", ["Device", "Family", "IDCODE", "Difference"],
      help.nearest.map((one) => [deviceLink(one), one.family, one.id, one.difference])) : null,
    help.stub ? make("details", {}, make("summary", {}, "Describe it"),
      make("p", {}, "Fill in each ? and put this into a Family of a description file:"), make("pre", {tabindex: "0"}, help.stub),
      copyButton("description", () => help.stub)) : null);
}

function notes(answer) {
  if (answer.notes.length === 0) return null;
  return make("div", {}, make("h3", {}, "Notes"), make("ul", {class: "notes"}, answer.notes.map((note) => make("li", {}, note)),
    answer.moreNotes ? make("li", {}, "and " + answer.moreNotes + " more") : null));
}

const formNames = {openocd: ["OpenOCD configuration", "chain.cfg"], text: ["Text, as plddb identify prints it", "chain.txt"],
  tsv: ["TSV", "chain.tsv"], json: ["JSON", "chain.json"], svg: ["Drawing (SVG)", "chain.svg"]};
let formChosen = "openocd";

function forms() {
  const area = make("pre", {id: "form-text", tabindex: "0", "aria-label": "The chain in the chosen form"});
  const select = make("select", {id: "form"}, Object.entries(formNames).map(([name, [label]]) =>
    make("option", {value: name, selected: name === formChosen}, label)));
  const show = () => attempt(area, () => { area.textContent = ask("form", formChosen).text; });
  select.addEventListener("change", () => { formChosen = select.value; show(); });
  show();
  return make("div", {class: "forms"}, make("h3", {}, make("label", {for: "form"}, "Use it elsewhere")), make("div", {}, select), area,
    make("div", {class: "row"}, copyButton("text", () => area.textContent),
      make("button", {type: "button", onclick: () => save(area.textContent, formNames[formChosen][1])}, "Save as a file")));
}
