// Takes files: programming files, the own devices of the user, scans.
"use strict";

const most = {scan: 64 << 20, own: 64 << 20, program: 256 << 20};  // bytes
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
