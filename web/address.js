// Keeps in the address what is asked, and shows what an address asks for.
"use strict";

const longestAddress = 100000;  // characters; browsers cut longer ones

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
