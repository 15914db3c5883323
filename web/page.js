// Begins: offers examples, and listens to what people do.
"use strict";

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
