// Undoes the scrambling of runtime.conf, for the JavaScript that Kaitai Struct compiles from
// runtime_conf.ksy. The compiled reader asks for it as a module of this name, so put it into
// node_modules, or where NODE_PATH leads.
class SealkeeperUnscramble {
    decode(stored) {
        const plain = new Uint8Array(stored);
        if (plain.length < 2) {
            return plain;
        }
        // An element of such an array keeps the low eight bits of what it is given.
        const last = plain.length - 1;
        plain[last] -= 3 * last;
        for (let i = last - 1; i >= 0; --i) {
            plain[i] -= plain[i + 1] + 3 * i;
        }
        return plain;
    }
}

module.exports = { SealkeeperUnscramble };
