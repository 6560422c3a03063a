#!/usr/bin/env node
// Lists the npm packages whose code Kelmo ships: the ones in the bundles js/build.mjs
// writes and the ones copied from node_modules as they are (React, Babel, esbuild…),
// with their versions and licences, read from package-lock.json and node_modules.
//
//   node scripts/list-bundled-packages.mjs BUILD_DIR
//   node scripts/list-bundled-packages.mjs --copyright FILE BUILD_DIR
//
// BUILD_DIR is a built Kelmo build directory (the build writes bundled-inputs.txt
// there). The second form writes the package's machine-readable copyright file.
import { existsSync, readFileSync, readdirSync, writeFileSync } from "node:fs";
import path from "node:path";
import { fileURLToPath } from "node:url";

const root = path.dirname(path.dirname(fileURLToPath(import.meta.url)));
const args = process.argv.slice(2);
const copyrightFile = args[0] === "--copyright" ? args.splice(0, 2)[1] : undefined;
if (args.length !== 1) {
  console.error("usage: list-bundled-packages.mjs [--copyright FILE] BUILD_DIR");
  process.exit(2);
}
const read = (file) => readFileSync(path.resolve(root, file), "utf8");
const lock = JSON.parse(read("package-lock.json")).packages;
const folderOf = (file) => /^(.*node_modules\/(?:@[^/]+\/)?[^/]+)\//.exec(path.relative(root, file))?.[1];

// Package folder (node_modules/…) -> names of the shipped files that hold its code.
const shipped = new Map();
function ship(folder, file) {
  if (!shipped.has(folder))
    shipped.set(folder, new Set());
  shipped.get(folder).add(file);
}
for (const line of read(path.resolve(args[0], "bundled-inputs.txt")).split("\n").filter(Boolean)) {
  const [kind, file] = [line.slice(0, line.indexOf(" ")), line.slice(line.indexOf(" ") + 1)];
  if (kind === "bundles") {
    for (const [bundle, folders] of Object.entries(JSON.parse(read(file))))
      folders.forEach((folder) => ship(folder, bundle));
  } else {
    ship(folderOf(path.resolve(file)), path.basename(file));
  }
}

const manifest = (folder) => JSON.parse(read(path.join(folder, "package.json")));
const licenceFiles = (folder) =>
  readdirSync(path.resolve(root, folder)).filter((name) => /^(licen[cs]e|copying|unlicense|notice)([.-].*)?$/i.test(name))
    .sort().map((name) => ({ name, text: read(path.join(folder, name)) }));
const repositoryOf = (folder) => {
  const { repository } = manifest(folder);
  return /github\.com[/:]([^/]+\/[^/#.]+)/.exec(repository?.url ?? repository ?? "")?.[1];
};

// A package without a licence file of its own (a platform binary, one package of a
// monorepo) takes the one of another package from the same repository.
function borrowedLicenceFiles(folder) {
  const repository = repositoryOf(folder);
  const sibling = repository && Object.keys(lock).find((other) =>
    other.startsWith("node_modules/") && other !== folder && existsSync(path.resolve(root, other, "package.json")) &&
    repositoryOf(other) === repository && licenceFiles(other).length > 0);
  return sibling ? { from: manifest(sibling).name, files: licenceFiles(sibling) } : { files: [] };
}

function describe(folder) {
  const own = manifest(folder);
  const locked = lock[folder];
  if (!locked)
    throw new Error(`${folder} is shipped but not in package-lock.json`);
  const declared = locked.license ?? own.license?.type ?? own.license ??
    own.licenses?.map((licence) => licence.type ?? licence).join(" OR ");
  let files = licenceFiles(folder);
  let borrowedFrom;
  if (!files.some((file) => !/^notice/i.test(file.name)))
    ({ from: borrowedFrom, files } = borrowedLicenceFiles(folder));
  const text = files.map((file) => file.text).join("\n");
  const licence = declared ?? (/Permission is hereby granted, free of charge/.test(text) ? "MIT" : undefined);
  if (!licence)
    throw new Error(`${folder} names no licence and ships no licence text`);
  const author = own.author?.name ?? own.author;
  return { folder, name: own.name, version: locked.version, licence, files, borrowedFrom, author,
    shippedIn: [...shipped.get(folder)].sort() };
}

const packages = [...shipped.keys()].map(describe).sort((a, b) => a.name.localeCompare(b.name));

if (!copyrightFile) {
  const rows = new Map(); // one row for the copies of a version in several folders
  for (const p of packages) {
    const row = rows.get(`${p.name}@${p.version}`) ?? [p.name, p.version, p.licence, new Set()];
    p.shippedIn.forEach((file) => row[3].add(file));
    rows.set(`${p.name}@${p.version}`, row);
  }
  rows.forEach((row) => (row[3] = [...row[3]].sort().join(" ")));
  const widths = [0, 1, 2].map((column) => Math.max(...[...rows.values()].map((row) => row[column].length)));
  for (const row of rows.values())
    console.log(row.map((cell, column) => (column < 3 ? cell.padEnd(widths[column]) : cell)).join("  "));
  console.log(`${rows.size} packages`);
  process.exit(0);
}

// ---- The copyright file (Debian's machine-readable format) ----

// SPDX names as Debian spells them; those Debian keeps in /usr/share/common-licenses
// are referred to there instead of repeated.
const debianNames = { MIT: "Expat", "BSD-2-Clause": "BSD-2-clause", "BSD-3-Clause": "BSD-3-clause" };
const commonLicences = new Set(["Apache-2.0", "MPL-1.1", "MPL-2.0", "CC0-1.0", "GPL-2", "GPL-3", "LGPL-2.1", "LGPL-3"]);
function debianLicence(spdx) {
  return spdx.replace(/\s+OR\s+SEE LICENSE IN \S+/i, "").replace(/[()]/g, "").split(/\s+/)
    .map((word) => (/^(AND|OR)$/i.test(word) ? word.toLowerCase() : debianNames[word] ?? word)).join(" ");
}

const isCopyrightLine = (line) =>
  /^(Copyright\b|COPYRIGHT\b|\(c\)\s*\d|©)/.test(line) &&
  !/\[yyyy\]|\{yyyy\}|<year>|^copyright (notice|holder|owner|law|and)/i.test(line);
const withoutCopyrightWords = (line) => line.replace(/^((copyright|\(c\)|©)[\s:]*)+/i, "").trim();

// Kelmo's own licence: its copyright line, and its terms for packages that name MIT
// and ship no text of it.
const ownLines = read("LICENSE").split("\n");
const ownCopyright = ownLines.filter((line) => isCopyrightLine(line.trim())).map(withoutCopyrightWords);
const expatTerms = ownLines.filter((line, index) => index > 0 && !isCopyrightLine(line.trim())).join("\n").trim();

function terms(p, licence) {
  const names = licence.split(" ").filter((word) => word !== "and" && word !== "or");
  const notices = p.files.filter((file) => /^notice/i.test(file.name)).map((file) => file.text);
  if (names.every((name) => commonLicences.has(name)))
    return [...names.map((name) => `On Debian systems, the full text of the ${name} licence is in /usr/share/common-licenses/${name}.`), ...notices].join("\n\n");
  if (p.files.length) // without the copyright lines, which the Copyright field holds
    return p.files.map((file) => file.text.split("\n").filter((line) => !isCopyrightLine(line.trim())).join("\n"))
      .join("\n\n").trim();
  if (licence === "Expat")
    return expatTerms;
  return `${p.name} names the licence ${p.licence} and ships no text of it.`;
}

function copyrights(p) {
  const lines = p.files.flatMap((file) => file.text.split("\n")).map((line) => line.trim())
    .filter(isCopyrightLine).map(withoutCopyrightWords).filter(Boolean);
  return lines.length ? [...new Set(lines)] : [p.author ? String(p.author) : `the ${p.name} authors`];
}

// Continuation lines of a field: indented, blank ones written as " .".
const continued = (text) =>
  text.replace(/\r/g, "").replace(/\t/g, "    ").split("\n").map((line) => line.trimEnd())
    .map((line) => (line ? ` ${line}` : " .")).join("\n").replace(/^( \.\n)+|(\n \.)+$/g, "");

const groups = new Map();
for (const p of packages) {
  const licence = debianLicence(p.licence);
  const body = terms(p, licence);
  const key = `${licence}\n${body.replace(/\s+/g, " ")}`;
  if (!groups.has(key))
    groups.set(key, { licence, body, members: [] });
  groups.get(key).members.push(p);
}

const paragraphs = [
  ["Format: https://www.debian.org/doc/packaging-manuals/copyright-format/1.0/",
    "Upstream-Name: Kelmo",
    "Comment: Written at build time by scripts/list-bundled-packages.mjs from",
    " package-lock.json and node_modules: every npm package whose code Kelmo ships,",
    " with the files of this package that hold it."].join("\n"),
  ["Files: *", `Copyright: ${ownCopyright.join("\n ")}`, "License: Expat", continued(expatTerms)].join("\n"),
];
for (const { licence, body, members } of groups.values()) {
  const holders = [...new Set(members.flatMap(copyrights))];
  const notes = members.map((p) => `${p.name} ${p.version} in ${p.shippedIn.join(", ")}` +
    (p.borrowedFrom ? ` (licence text from ${p.borrowedFrom})` : "") + (p.files.length ? "" : " (ships no licence text)"));
  paragraphs.push([
    `Files: ${members.map((p) => `${p.folder}/*`).join("\n ")}`,
    `Copyright: ${holders.join("\n ")}`,
    `License: ${licence}`,
    continued(body),
    `Comment: ${notes.join("\n ")}`,
  ].join("\n"));
}
writeFileSync(copyrightFile, paragraphs.join("\n\n") + "\n");
