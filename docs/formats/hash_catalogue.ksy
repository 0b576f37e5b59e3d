meta:
  id: hash_catalogue
  title: Hash catalogue (base.bin, or a mod's NAME.bin)
  file-extension: bin
  license: Apache-2.0
  endian: le
doc: |
  The signed list of a game's files with their sizes and the SHA-256 digests of their chunks.

  The entry block is compressed by LZW with codes of one fixed width. Kaitai Struct has no routine for
  that, so it is left here as bytes. Decompress it, and give what comes out to the type
  `decompressed_entries` together with `entry_count`.

  Nothing here checks the signature.
doc-ref: docs/catalogue-format.md
seq:
  - id: magic
    contents: [0x51, 0x56, 0x52, 0x00]
  - id: format_version
    type: u2
    valid: 4
  - id: signature_layout
    type: u2
    doc: 1 where the signature covers the whole file. Anything else is an older layout.
  - id: signature_area
    size: 1024
    doc: The signature, then zeros.
  - id: signature_length
    type: u4
    doc: More than 1024 is no error of the layout. The signature cannot be good then.
  - id: crl_length
    type: u4
  - id: compressed_length
    type: u4
  - id: raw_length
    type: u4
    doc: Length of the entry block before compression. Readers do not rely on it.
  - id: entry_count
    type: u4
  - id: revocation_list
    size: crl_length
    doc: The file given with -incrl, as it was.
  - id: entry_block
    size: compressed_length
    type: compressed_entries
  - id: past_the_end
    size-eos: true
    valid:
      expr: past_the_end.size == 0
    doc: The lengths must add up to the file's.
instances:
  signature:
    pos: 8
    size: signature_length
    if: signature_length <= 1024
types:
  compressed_entries:
    doc: |
      A block that does not begin with 1F 9D counts as empty. This definition takes such a block, too:
      ask `is_compressed` before anything else.
    seq:
      - id: prefix
        size: 2
        if: _io.size >= 2
      - id: flags
        type: u1
        if: is_compressed
      - id: codes
        size-eos: true
        doc: Packed from the least significant bit. Bits past the last whole code are not looked at.
    instances:
      is_compressed:
        value: _io.size >= 2 and prefix == [0x1f, 0x9d]
      code_bits:
        value: flags & 0x1f
        if: is_compressed
        doc: The width of a code. Writers use 12.
  decompressed_entries:
    doc: |
      The entry block once it is decompressed. It is a stream of its own: no field of the catalogue leads
      here. What follows the last entry is not looked at.
    params:
      - id: entry_count
        type: u4
    seq:
      - id: entries
        type: entry
        repeat: expr
        repeat-expr: entry_count
  entry:
    seq:
      - id: file_size
        type: u8
      - id: name_position
        type: u4
        doc: |
          Index of the first 16-bit unit of the path field after the last unit that is a slash, 0 without
          one. Of a path at four bytes per character it counts two units to a character.
      - id: path
        size: 512
        type: path_field
      - id: digest_count
        type: u4
      - id: digests
        size: 32
        repeat: expr
        repeat-expr: digest_count
        doc: SHA-256 of each chunk of 4194304 bytes. The last chunk may be short.
  path_field:
    doc: |
      UTF-16 up to the first zero unit, or the whole field. A path that an alias changed stands here at
      four bytes per character. Of such a path, `units` has the first character alone.
    seq:
      - id: units
        type: u2
        repeat: until
        repeat-until: _ == 0 or _io.eof
