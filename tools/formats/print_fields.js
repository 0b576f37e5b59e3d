// Prints what the compiled readers find in a file, as JSON in the shape of "sealkeeper-inspect show --json":
// print_fields.js READERS_DIR catalogue|runtime.conf FILE [RAW_ENTRY_BLOCK]
"use strict";
const fs = require("fs");
const path = require("path");
const KaitaiStream = require("kaitai-struct/KaitaiStream");

// Null if there are no bytes.
function hex(bytes, between = "") {
    return bytes === undefined ? null : Array.from(bytes, (byte) => byte.toString(16).padStart(2, "0")).join(between);
}

// The text before the first zero.
function text(bytes) {
    const end = bytes.indexOf(0);
    return Buffer.from(end < 0 ? bytes : bytes.subarray(0, end)).toString("utf8");
}

function streamOf(file) {
    return new KaitaiStream(fs.readFileSync(file));
}

function entryOf(entry) {
    const zero = entry.path.units.indexOf(0);
    return {
        path: String.fromCharCode(...entry.path.units.slice(0, zero < 0 ? undefined : zero)),
        bytes: entry.fileSize,
        namePosition: entry.namePosition,
        digests: entry.digests.map((digest) => hex(digest)),
    };
}

function catalogue({ HashCatalogue }, file, rawEntryBlock) {
    const read = new HashCatalogue(streamOf(file));
    const fields = {
        magic: hex(read.magic, " "),
        "format version": read.formatVersion,
        "signature layout": read.signatureLayout,
        "signature area": hex(read.signatureArea),
        signature_length: read.signatureLength,
        crl_length: read.crlLength,
        compressed_length: read.compressedLength,
        raw_length: read.rawLength,
        entry_count: read.entryCount,
    };
    const blocks = {
        signature: hex(read.signature),
        revocationListBytes: read.revocationList.length,
        isCompressed: read.entryBlock.isCompressed,
        codeBits: read.entryBlock.codeBits ?? null,
    };
    const raw = new HashCatalogue.DecompressedEntries(streamOf(rawEntryBlock), null, null, read.entryCount);
    return { fields, blocks, entries: raw.entries.map(entryOf) };
}

function runtimeConf({ RuntimeConf }, file) {
    const read = new RuntimeConf(streamOf(file)).unscrambled;
    const fields = {
        magic: hex(read.magic, " "),
        "signature area": hex(read.signatureArea),
        "signature length": read.signatureLength,
        version: read.version,
        instances: read.maxActiveInstances,
        "crash reporter": text(read.crashReporterName),
        "anti-tamper solution": read.antiTamperSolution,
    };
    return { fields, blocks: { signature: hex(read.signature) }, entries: [] };
}

function main([readers, kind, file, rawEntryBlock]) {
    const read =
        kind === "catalogue"
            ? catalogue(require(path.resolve(readers, "HashCatalogue.js")), file, rawEntryBlock)
            : runtimeConf(require(path.resolve(readers, "RuntimeConf.js")), file);
    console.log(JSON.stringify(read));
}

main(process.argv.slice(2));
