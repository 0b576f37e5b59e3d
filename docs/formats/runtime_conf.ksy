meta:
  id: runtime_conf
  title: runtime.conf
  file-extension: conf
  license: Apache-2.0
  endian: le
doc: |
  The signed settings of a game's anti-cheat client.

  The file is scrambled. With n bytes, indices from 0 and differences modulo 256, go from the last byte
  to the first: the last is `stored[n-1] - 3*(n-1)`, each other one `stored[i] - plain[i+1] - 3*i`.
  None of the routines of Kaitai Struct does that, so `process` names one of our own:
  SealkeeperUnscramble.js, beside this file, has it for JavaScript. For another language write it under
  the name that the compiled reader asks for. Or unscramble the file first, and read it with the type
  `plain` alone.

  Nothing here checks the signature. It covers the plain bytes.
doc-ref: docs/runtime-conf-format.md
seq:
  - id: unscrambled
    size-eos: true
    process: sealkeeper_unscramble
    type: plain
types:
  plain:
    seq:
      - id: magic
        contents: [0x51, 0x56, 0x52, 0x00]
      - id: signature_area
        size: 1024
        doc: The signature, then zeros.
      - id: signature_length
        type: u4
        doc: More than 1024 is no error of the layout. The signature cannot be good then.
      - id: version
        type: u4
        valid: 1
      - id: max_active_instances
        type: u4
        doc: How many instances of the game may run at once.
      - id: crash_reporter_name
        size: 64
        doc: |
          UTF-8, padded with zeros; a name of 64 bytes has none at its end. A longer name was cut, perhaps
          within a character, so these are bytes and no text.
      - id: anti_tamper_solution
        type: u4
        enum: anti_tamper_solution
      - id: past_the_end
        size-eos: true
        doc: Nothing, in a file that the program wrote. Readers take a longer one, too.
    instances:
      signature:
        pos: 4
        size: signature_length
        if: signature_length <= 1024
enums:
  anti_tamper_solution:
    0: none
    1: generic
    2: arxan
    3: denuvo
    4: themida
    5: starforce
    6: vmprotect
    7: steam_drm
    8: appsign
