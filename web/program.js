// The program in WebAssembly: its functions (page.h) take texts, and answer with objects.
"use strict";

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
