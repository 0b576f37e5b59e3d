// Compiles the definitions of docs/formats to JavaScript: compile_formats.js OUT_DIR FILE.ksy...
"use strict";
const fs = require("fs");
const path = require("path");
const compiler = require("kaitai-struct-compiler");
const yaml = require("js-yaml");

async function compile(outDirectory, definition) {
    const files = await compiler.compile("javascript", yaml.load(fs.readFileSync(definition, "utf8")), null, false);
    for (const [name, source] of Object.entries(files)) {
        fs.writeFileSync(path.join(outDirectory, name), source);
    }
}

async function main([outDirectory, ...definitions]) {
    for (const definition of definitions) {
        await compile(outDirectory, definition);
    }
}

main(process.argv.slice(2)).catch((error) => {
    console.error(String(error));
    process.exitCode = 1;
});
