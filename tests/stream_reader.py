"""Reads streams of column stores by their documented layout, and tells what is in them.

Prints a line for each cell: source, variable, row, the double's bits and the text, if any. Names and
texts are told in hexadecimal behind a point. Fails on any byte that the layout doesn't account for.
"""
import struct
import sys
import zlib


class Reader:
    def __init__(self, block):
        self.block = block
        self.at = 0

    def take(self, size):
        piece = self.block[self.at:self.at + size]
        assert len(piece) == size, "the stream is short"
        self.at += size
        return piece

    def number(self):
        return struct.unpack("<I", self.take(4))[0]

    def text(self):
        return self.take(self.number())

    def name(self, size):
        field = self.take(size)
        name = field[:field.index(0)]
        assert field == name.ljust(size, b"\0"), "bytes behind a name"
        return name


def read_strings(reader):
    cells = {}
    for _ in range(reader.number()):
        source = reader.text()
        for _ in range(reader.number()):
            variable = reader.text()
            for _ in range(reader.number()):
                row, index = struct.unpack("<II", reader.take(8))
                cells[source, variable, row] = index
    table = []
    for _ in range(reader.number()):
        uses = reader.number()
        table.append(reader.text())
        assert list(cells.values()).count(len(table) - 1) == uses, "uses don't add up"
    return {cell: table[index] for cell, index in cells.items()}


def read(stream):
    reader = Reader(zlib.decompress(stream))
    flag, magic, count, total = struct.unpack("<BBHI", reader.take(8))
    assert (flag, magic, total) == (0, 0xB0, len(reader.block)), "header"
    entries = []
    for _ in range(count):
        entries.append([reader.number() for _ in range(3)] + [reader.name(65)])
        reader.take(3)
    names = [name for _, _, _, name in entries]
    assert names == sorted(names), "sources aren't sorted"
    cells = []
    for rows, variables, offset, source in entries:
        assert offset == reader.at, "offset"
        blocks = [(reader.name(288), reader.take(8 * rows)) for _ in range(variables)]
        assert blocks == sorted(blocks), "variables aren't sorted"
        for variable, column in blocks:
            for row in range(rows):
                cells.append((source, variable, row, column[8 * row:8 * row + 8][::-1]))
    texts = read_strings(reader) if reader.at < total else {}
    assert reader.at == total, "bytes behind the end"
    for source, variable, row, bits in cells:
        text = texts.get((source, variable, row))
        words = ["." + source.hex(), "." + variable.hex(), str(row), bits.hex()]
        print(*words + ([] if text is None else ["." + text.hex()]))


for path in sys.argv[1:]:
    with open(path, "rb") as file:
        read(file.read())
