#!/usr/bin/env python3
"""Reads a workbook back as a person's program would: a line for each cell, "SHEET!REF TYPE VALUE" with TYPE n for a
number and s for a text, and a line "SHEET frozen" for each sheet whose header row stays in sight."""
import sys
import zipfile
import xml.etree.ElementTree as xml

MAIN = "{http://schemas.openxmlformats.org/spreadsheetml/2006/main}"
RELATION = "{http://schemas.openxmlformats.org/officeDocument/2006/relationships}id"


def text_of(element):
    return "".join(t.text or "" for t in element.iter(MAIN + "t"))


def main(path):
    with zipfile.ZipFile(path) as book:
        if book.testzip() is not None:
            sys.exit("damaged archive")
        names = book.namelist()
        shared = []
        if "xl/sharedStrings.xml" in names:
            shared = [text_of(s) for s in xml.fromstring(book.read("xl/sharedStrings.xml")).iter(MAIN + "si")]
        relations = {r.get("Id"): r.get("Target")
                     for r in xml.fromstring(book.read("xl/_rels/workbook.xml.rels"))}
        for entry in xml.fromstring(book.read("xl/workbook.xml")).iter(MAIN + "sheet"):
            name = entry.get("name")
            sheet = xml.fromstring(book.read("xl/" + relations[entry.get(RELATION)]))
            if any(p.get("state") == "frozen" and p.get("ySplit") == "1" for p in sheet.iter(MAIN + "pane")):
                print("%s frozen" % name)
            for cell in sheet.iter(MAIN + "c"):
                kind, value = cell.get("t", "n"), cell.find(MAIN + "v")
                if kind == "inlineStr":
                    print("%s!%s s %s" % (name, cell.get("r"), text_of(cell)))
                elif kind == "s":
                    print("%s!%s s %s" % (name, cell.get("r"), shared[int(value.text)]))
                elif value is not None:
                    print("%s!%s n %s" % (name, cell.get("r"), value.text))


main(sys.argv[1])
