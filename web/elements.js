// What all parts of the page are made of. All texts are put into the page as text, never as markup.
"use strict";

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
