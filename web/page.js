// The page: asks the functions of page.cpp, and shows what they answer. No rule about devices is here. All texts are put into the
// page as text, never as markup.
"use strict";
(() => {
  const most = {scan: 64 << 20, own: 64 << 20, program: 256 << 20};  // bytes
  const longestAddress = 100000;  // characters; browsers cut longer ones

  const examples = [
    ["Zynq", `Info : JTAG tap: zynq_pl.bs tap/device found: 0x13722093 (mfg: 0x049 (Xilinx), part: 0x3722, ver: 0x1)
Info : JTAG tap: zynq.cpu tap/device found: 0x4ba00477 (mfg: 0x23b (ARM Ltd), part: 0xba00, ver: 0x4)
`],
    ["Four makers", `# nearest TDO first
0x59604093
0x4BA00477
0x0362D093
0x1100481B
`],
    ["Unknown id", `Chain length: 2
Device Id: 00000011011100101010000010010011 (0x0372A093)
Device Id: 01001011101000000000010001110111 (0x4BA00477)
`],
    ["Ambiguous id", `0x020F30DD
`],
    ["Misread id", `0xB2C08127
`],
  ];

  // --- The page's elements --------------------------------------------------------------------------------------------------

  const at = (id) => document.getElementById(id);

  /// An element with attributes, and with children: elements, texts, or null.
  function make(tag, attributes, ...children) {
    const element = document.createElement(tag);
    for (const [name, value] of Object.entries(attributes || {})) {
      if (name === "onclick") element.addEventListener("click", value);
      else if (value !== null && value !== false) element.setAttribute(name, value === true ? "" : value);
    }
    element.append(...children.flat().filter((child) => child !== null && child !== undefined && child !== ""));
    return element;
  }

  const put = (place, ...children) => place.replaceChildren(...children.flat().filter((child) => child !== null));
  const count = (n, one, several) => n + " " + (n === 1 ? one : several || one + "s");
  const tag = (text, kind) => make("span", {class: "tag " + kind}, text);
  const copyButton = (what, text) => make("button", {type: "button", onclick: (event) => copy(text(), event.target)}, "Copy " + what);

  /// A table; each row is a list of cells: texts, elements or null.
  function table(caption, heads, rows, className) {
    return make("div", {class: "wide"}, make("table", {class: className || null},
      caption ? make("caption", {}, caption) : null,
      make("thead", {}, make("tr", {}, heads.map((head) => make("th", {scope: "col"}, head)))),
      make("tbody", {}, rows.map((row) => make("tr", {}, row.map((cell, i) =>
        make(i === 0 ? "th" : "td", {scope: i === 0 ? "row" : null, "data-label": heads[i]}, cell === null ? "" : cell instanceof Node ? cell : String(cell))))))));
  }

  async function copy(text, button) {
    let isCopied = false;
    try {
      await navigator.clipboard.writeText(text);
      isCopied = true;
    } catch (error) {  // pages that are not served by https have no clipboard
      const area = make("textarea", {class: "unseen", "aria-hidden": "true", tabindex: "-1"});
      area.value = text;
      document.body.append(area);
      area.select();
      isCopied = document.execCommand("copy");
      area.remove();
      button.focus();
    }
    const label = button.dataset.label || button.textContent;
    button.dataset.label = label;
    button.textContent = isCopied ? "Copied" : "Not copied: the browser refuses";
    setTimeout(() => { button.textContent = label; }, 1500);
  }

  function save(text, name) {
    const link = make("a", {href: URL.createObjectURL(new Blob([text], {type: "application/octet-stream"})), download: name});
    link.click();
    setTimeout(() => URL.revokeObjectURL(link.href), 1000);
  }

  // --- The functions of page.cpp --------------------------------------------------------------------------------------------

  let code;  // the compiled module
  let library;  // its instance
  let own = [];  // the user's files: {name, bytes, family}, which a new instance gets again
  const encoder = new TextEncoder();
  const decoder = new TextDecoder();

  class Trouble extends Error {}

  /// What was packed by gzip and coded by base64.
  function unpacked(base64) {
    const text = atob(base64);
    const bytes = new Uint8Array(text.length);
    for (let i = 0; i < text.length; ++i) bytes[i] = text.charCodeAt(i);
    return new Response(new Blob([bytes]).stream().pipeThrough(new DecompressionStream("gzip"))).arrayBuffer();
  }

  /// What the C library asks of a system that has no files: it gets no environment, and its messages are dropped.
  function systemCalls() {
    const memory = () => new DataView(library.memory.buffer);
    const zero = (...pointers) => { for (const p of pointers) memory().setUint32(p, 0, true); return 0; };
    const known = {
      environ_sizes_get: zero,
      environ_get: () => 0,
      fd_write: (file, vectors, size, written) => zero(written),
      proc_exit: () => { throw new Trouble("the program ended"); },
    };
    const other = () => 52;  // not supported
    return new Proxy({}, {get: (target, name) => known[name] || other});
  }

  /// A new instance with all devices.
  async function start() {
    code = code || await WebAssembly.compile(await unpacked(plddbPage.wasm));
    const imports = {};
    for (const {module, name} of WebAssembly.Module.imports(code)) {
      imports[module] = imports[module] || {};
      imports[module][name] = systemCalls()[name];
    }
    library = (await WebAssembly.instantiate(code, imports)).exports;
    library._initialize();
    let devices = 0;
    for (const [name, text] of Object.entries(plddbPage.data)) devices += ask("addShipped", name, text).devices;
    for (const file of own) ask("add", file.name, file.bytes, file.family);
    return devices;
  }

  /// Calls a function with texts, bytes and numbers; its answer is an object. Throws Trouble with a reason in words.
  function ask(name, ...values) {
    const pointers = [];
    try {
      const numbers = values.flatMap((value) => {
        if (typeof value === "number") return [value];
        const bytes = typeof value === "string" ? encoder.encode(value) : value;
        const pointer = library.allocate(bytes.length) >>> 0;
        if (pointer === 0) throw new Trouble("this needs more memory than the page may use");
        pointers.push(pointer);
        new Uint8Array(library.memory.buffer, pointer, bytes.length).set(bytes);
        return [pointer, bytes.length];
      });
      const start = library[name](...numbers) >>> 0;
      const all = new Uint8Array(library.memory.buffer);
      const answer = JSON.parse(decoder.decode(all.subarray(start, all.indexOf(0, start))));
      if (answer.failure) throw new Trouble(answer.failure);
      return answer;
    } finally {
      for (const pointer of pointers) library.release(pointer);
    }
  }

  /// Runs `action`; what it throws becomes a message at `place`. A library that broke down is started anew.
  async function attempt(place, action) {
    try {
      await action();
    } catch (error) {
      put(place, make("p", {class: "bad", role: "alert"}, error instanceof Trouble ? error.message
        : "The page met a fault and has started its program again: " + error));
      if (!(error instanceof Trouble)) await start();
    }
  }

  // --- The chain ------------------------------------------------------------------------------------------------------------

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
    at("status").textContent = "This is no scan that can be read.";
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
    return make("div", {class: "forms"}, make("h3", {}, make("label", {for: "form"}, "To take along")), make("div", {}, select), area,
      make("div", {class: "row"}, copyButton("text", () => area.textContent),
        make("button", {type: "button", onclick: () => save(area.textContent, formNames[formChosen][1])}, "Save as a file")));
  }

  // --- Devices --------------------------------------------------------------------------------------------------------------

  function lookUp(name) {
    at("find").value = name;
    remember();
    showFound().then(() => {
      const title = at("device-title");
      if (title) { title.focus(); at("search").scrollIntoView(); }
    });
  }

  function showFound() {
    const text = at("find").value.trim();
    put(at("found"));
    put(at("device"));
    at("device").hidden = true;
    at("found-status").textContent = "";
    if (text === "") return Promise.resolve();
    return attempt(at("found"), () => {
      const answer = ask("find", text);
      if (answer.matches.length === 0) return showNear(answer);
      at("found-status").textContent = answer.more ? "More than " + answer.matches.length + " devices match." :
        count(answer.matches.length, "device matches", "devices match") + ".";
      if (answer.matches.length > 1) put(at("found"), foundTable(answer));
      const mark = answer.matches[0].mark;
      showDevice(0, mark);
    });
  }

  function showNear(answer) {
    at("found-status").textContent = "No device matches.";
    if (answer.suggestions.length === 0) return;
    put(at("found"), make("p", {class: "row"}, "Near: ", answer.suggestions.map((name) =>
      make("button", {type: "button", onclick: () => lookUp(name)}, name))));
  }

  function foundTable(answer) {
    const rows = answer.matches.map((match, i) => [
      make("button", {type: "button", class: "link", onclick: () => { showDevice(i, match.mark); at("device-title").focus(); }}, match.name || match.codeName),
      match.family, match.matchedBy.join(", "), match.file + ":" + match.line]);
    return make("div", {}, table(answer.ambiguous ? "Lookups take the first:" : "", ["Device", "Family", "Matched by", "Where"], rows),
      answer.more ? make("p", {class: "soft"}, "and " + answer.more + " more; type more of the name") : null);
  }

  function markText(mark) {
    const parts = [mark.package ? "package " + mark.package + (mark.leadFree ? ", lead-free" : "") +
      (mark.packageDescribed ? "" : " (not described)") : "", mark.speed ? "speed grade " + mark.speed : "",
      mark.temperature ? "temperature grade: " + mark.temperature : "", mark.unknown.length ? "unknown: " + mark.unknown.join(", ") : ""];
    return "Begins with " + mark.name + "; after it: " + parts.filter((part) => part).join("; ");
  }

  function showDevice(index, mark) {
    const answer = ask("show", index);
    const name = (field) => answer.device.fields[field] && answer.device.fields[field].value;
    const place = at("device");
    place.hidden = false;
    put(place, make("h3", {id: "device-title", tabindex: "-1"}, name("Name") || name("CodeName") || "Device"),
      make("p", {class: "soft"}, "Matched by " + answer.matchedBy.join(", ") + " · " + answer.file),
      mark ? make("p", {}, markText(mark)) : null,
      elementTables("Device", answer.device),
      make("p", {}, "Bypass device in modes: " + (answer.bypassModes.join(", ") || "none")),
      make("details", {}, make("summary", {}, "Family " + (answer.family.fields.Name ? answer.family.fields.Name.value : "")),
        elementTables("Family", answer.family)));
  }

  /// A described element: its fields, and each of its lists as a table.
  function elementTables(title, element) {
    const fields = Object.entries(element.fields).map(([name, field]) => [name, field.value, field.line]);
    return make("div", {}, fields.length ? table("", ["Field", "Value", "Line"], fields, "fields") : null,
      Object.entries(element.lists).map(([name, records]) => [make("h4", {}, name), listTable(records),
        records.flatMap((record) => Object.entries(record.lists).map(([inner, rows]) => [make("h4", {}, name + " / " + inner), listTable(rows)]))]).flat(3));
  }

  function listTable(records) {
    const names = [...new Set(records.flatMap((record) => Object.keys(record.fields)))];
    return table("", ["#", ...names, "Line"], records.map((record, i) => [i + 1,
      ...names.map((name) => record.fields[name] ? record.fields[name].value : null), record.line]));
  }

  // --- Files ----------------------------------------------------------------------------------------------------------------

  const mib = (bytes) => bytes / (1 << 20) + " MiB";

  /// The content of a file that is not too large. Throws Trouble.
  async function contentOf(file, limit) {
    if (file.size > limit) throw new Trouble(file.name + ": larger than " + mib(limit));
    try {
      return new Uint8Array(await file.arrayBuffer());
    } catch (error) {
      throw new Trouble(file.name + ": the browser cannot read it (a folder?)");
    }
  }

  let programs = [];  // {name, bytes}, judged anew when the chain changes

  async function takePrograms(files) {
    const place = at("judged");
    await attempt(place, async () => {
      const read = [];
      for (const file of files) read.push({name: file.name, bytes: await contentOf(file, most.program)});
      programs = read;
      judge();
    });
  }

  function judge() {
    put(at("judged"), programs.map(({name, bytes}) => judgedArticle(ask("fits", name, bytes))));
  }

  /// Files of many megabytes would be read anew with each key.
  const judgeAgain = () => programs.length ? attempt(at("judged"), judge) : undefined;

  function judgedArticle(answer) {
    const verdicts = {"fits": "good", "fits-several": "good", "fits-none": "bad", "unknown": "warn"};
    const [title, ...lines] = answer.summary.trimEnd().split("\n");
    const indent = (line) => line.length - line.trimStart().length;
    const said = lines.filter((line) => indent(line) < 4).map((line) => line.trim());
    const reasons = answer.reasons;
    const verdict = answer.hasChain ? said[1] : null;
    return make("article", {class: "article"}, make("h3", {}, title),
      verdict ? make("p", {}, tag(verdict, verdicts[answer.verdict])) : null,
      make("p", {}, said[0]),
      reasons.length ? make("ul", {}, reasons.map((reason) => make("li", {}, reason))) : null,
      answer.statements.length ? make("details", {}, make("summary", {}, "What the file states"),
        table("", ["Kind", "Text", "Value", "Where"], answer.statements.map((one) => [one.kind, one.text,
          one.mask ? one.value + " under " + one.mask : one.value, one.line ? "line " + one.line : "byte " + one.offset]))) : null,
      answer.hasChain ? null : make("p", {class: "soft"}, "Paste a scan to see whether it fits."));
  }

  async function takeOwn(files) {
    const place = at("added");
    for (const file of files) {
      const article = make("article", {class: "article"});
      place.prepend(article);
      await attempt(article, async () => {
        const bytes = await contentOf(file, most.own);
        const answer = ask("add", file.name, bytes, at("family").value.trim() || "BSDL");
        for (const old of place.querySelectorAll("article")) if (old !== article && old.dataset.file === file.name) old.remove();
        article.dataset.file = file.name;
        if (answer.isAdded) own = [...own.filter((one) => one.name !== file.name), {name: file.name, bytes, family: at("family").value}];
        put(article, addedContent(answer, article));
      });
    }
    await Promise.all([showScan(), showFound()]);
  }

  function addedContent(answer, article) {
    const findings = [...answer.faults, ...answer.findings];
    const remove = () => {
      ask("removeFile", answer.file);
      own = own.filter((one) => one.name !== answer.file);
      article.remove();
      at("own-file").focus();
      showScan();
      showFound();
    };
    return [make("h3", {}, answer.file),
      make("p", {}, answer.isAdded ? tag("added: " + count(answer.devices, "device"), "good") : tag("not added", "bad"), " ",
        answer.isAdded ? make("button", {type: "button", onclick: remove}, "Remove " + answer.file) : null),
      findings.length ? table(count(findings.length, "finding"), ["Place", "", "What"], findings.map((one) =>
        [one.line + ":" + one.column, tag(one.severity, one.severity === "error" ? "bad" : "warn"), one.text + (one.code ? " [" + one.code + "]" : "")])) : null,
      answer.moreFindings ? make("p", {}, "and " + answer.moreFindings + " more") : null,
      answer.description ? make("details", {}, make("summary", {}, "Its description"), make("pre", {tabindex: "0"}, answer.description),
        copyButton("description", () => answer.description)) : null];
  }

  async function takeScan(files) {
    await attempt(at("answer"), async () => {
      const bytes = await contentOf(files[0], most.scan);
      const coding = bytes[0] === 0xFF && bytes[1] === 0xFE ? "utf-16le" : bytes[0] === 0xFE && bytes[1] === 0xFF ? "utf-16be" : "utf-8";
      at("scan").value = new TextDecoder(coding).decode(bytes);
      remember();
      await showScan();
    });
  }

  // --- The address ----------------------------------------------------------------------------------------------------------

  /// The view as the part of an address after '#': scan, order, comm, ir, trust, find. Empty where all is as at first.
  function fragment() {
    const parts = [];
    const add = (name, value) => { if (value) parts.push(name + "=" + encodeURIComponent(value)); };
    const {order, comm, ir, trust} = options();
    add("scan", at("scan").value.trim() === "" ? "" : at("scan").value);
    add("order", order);
    add("comm", comm === "JTAG" ? "" : comm);
    add("ir", ir);
    add("trust", trust ? "1" : "");
    add("find", at("find").value.trim());
    return parts.join("&");
  }

  let waiting = 0;

  /// Keeps the view in the address, a little later: browsers limit how often that may change.
  function remember() {
    clearTimeout(waiting);
    waiting = setTimeout(() => {
      const view = at("scan").value.length > longestAddress ? "" : fragment();
      if (view.length <= longestAddress && "#" + view !== location.hash) history.replaceState(null, "", "#" + view);
    }, 300);
  }

  /// Shows what the address asks for.
  function restore() {
    const values = {};
    for (const part of location.hash.slice(1).split("&")) {
      const equals = part.indexOf("=");
      try {
        if (equals > 0) values[part.slice(0, equals)] = decodeURIComponent(part.slice(equals + 1).replace(/\+/g, " "));
      } catch (error) {
        values[part.slice(0, equals)] = part.slice(equals + 1);  // a % that codes nothing
      }
    }
    const choose = (id, value, otherwise) => {
      at(id).value = value || otherwise;
      if (at(id).value !== (value || otherwise)) at(id).value = otherwise;
    };
    at("scan").value = values.scan || "";
    choose("order", values.order, "");
    choose("comm", values.comm, "JTAG");
    at("ir").value = values.ir || "";
    at("trust").checked = values.trust === "1";
    at("options").open = Boolean(values.order || values.comm || values.ir || values.trust);
    at("find").value = values.find || "";
    return Promise.all([showScan(), showFound()]);
  }

  function share(event) {
    const view = fragment();
    if (view.length > longestAddress) {
      at("status").textContent = "The scan is too long for an address.";
      return;
    }
    copy(location.href.split("#")[0] + "#" + view, event.target);
  }

  // --- What people do -------------------------------------------------------------------------------------------------------

  /// Files may be dropped on `zone`.
  function takesDrops(zone, take) {
    zone.addEventListener("dragover", (event) => {
      if (!event.dataTransfer.types.includes("Files")) return;
      event.preventDefault();
      zone.classList.add("over");
    });
    zone.addEventListener("dragleave", () => zone.classList.remove("over"));
    zone.addEventListener("drop", (event) => {
      if (event.dataTransfer.files.length === 0) return;
      event.preventDefault();
      event.stopPropagation();
      zone.classList.remove("over");
      take([...event.dataTransfer.files]);
    });
  }

  function takesChoice(input, take) {
    input.addEventListener("change", () => {
      const files = [...input.files];
      input.value = "";  // the same file may be chosen again
      if (files.length) take(files);
    });
  }

  function listen() {
    const changed = () => { remember(); showScan(); };
    at("scan").addEventListener("input", changed);
    for (const id of ["order", "comm", "trust"]) at(id).addEventListener("change", changed);
    at("ir").addEventListener("input", changed);
    at("find").addEventListener("input", () => { remember(); showFound(); });
    at("share").addEventListener("click", share);
    at("clear").addEventListener("click", () => { at("scan").value = ""; changed(); at("scan").focus(); });
    for (const [name, text] of examples) {
      at("examples").append(make("button", {type: "button", onclick: () => { at("scan").value = text; changed(); }}, name));
    }
    for (const event of ["dragover", "drop"]) {  // beside the zones a file would replace the page
      document.addEventListener(event, (dropped) => { if (dropped.dataTransfer.types.includes("Files")) dropped.preventDefault(); });
    }
    takesDrops(at("scan"), takeScan);
    takesChoice(at("scan-file"), takeScan);
    takesDrops(at("program-drop"), takePrograms);
    takesChoice(at("program-file"), takePrograms);
    takesDrops(at("own-drop"), takeOwn);
    takesChoice(at("own-file"), takeOwn);
    window.addEventListener("hashchange", () => { if (location.hash.slice(1) !== fragment()) restore(); });
    watchWidth();
  }

  document.addEventListener("DOMContentLoaded", () => attempt(at("status"), async () => {
    const devices = await start();
    at("version").textContent = plddbPage.version;
    at("devices").textContent = ", " + devices + " devices";
    listen();
    await restore();
    performance.mark("answered");
    document.documentElement.dataset.ready = "true";
  }).catch((error) => {
    at("status").textContent = "This page needs a newer browser (Chrome 95, Firefox 113, Safari 16.4, or later): " + error;
  }));
})();
