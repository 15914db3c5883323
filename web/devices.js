// Finds devices, and shows them.
"use strict";

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
  put(at("found"), make("p", {class: "row"}, "Similar: ", answer.suggestions.map((name) =>
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
