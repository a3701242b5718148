"""Packs the files of an archive record by record, from the tables of the format alone: it knows no program that uses them.

Layers, blocks and items are dictionaries whose keys are the field names of the store. An item may carry "claims", which take
the place of counts and flags that would follow from its parts, for files that lie. `noise` fills with 0xA5 whatever a reader
ignores, and writes 7 for a flag that is 1.
"""

import struct

TITLES = {"Ovm": b"Orva Data Manage Version ", "Ovi": b"Orva Data Index Version ", "Ovl": b"Orva Layer Data Binary Version ",
          "Ovb": b"Orva Data Binary Version ", "Ovt": b"Orva Data Text Version "}
HEADER_SIZE = 40
LAYER_SIZE = {"1.00": 1388, "1.10": 1412}
HEAD_SIZE = {"1.00": 81, "1.10": 86}
BLOCK_RECORD_SIZE, ITEM_RECORD_SIZE, MANAGE_SIZE, MESH_SIZE, STRING_SIZE = 91, 20, 583, 9, 115
NOISE = b"\xa5"


def unread(size, noise):
    return (NOISE if noise else b"\0") * size


def chars(text, size, noise=False):
    assert len(text) < size
    return text + b"\0" + unread(size - len(text) - 1, noise)


def flag(value, noise=False):
    return bytes([(7 if noise else 1) if value else 0])


def as_byte(value):
    """A number as it survives in one signed byte."""
    return (value + 128) % 256 - 128


def as_i32(value):
    return struct.unpack("<i", struct.pack("<I", value))[0]


def header(kind, version, noise=False):
    told = TITLES[kind] + version.encode() + b"\0"
    return told + unread(HEADER_SIZE - len(told), noise)


# --- Layers ----------------------------------------------------------------------------------------------------------------


def layer_record(version, each, noise=False):
    newer = version == "1.10"
    return b"".join([
        chars(each["code"], 51, noise),
        chars(each["layerName"], 256, noise),
        struct.pack("<iiI", each["layIndex"], each["layType"], each["color"]),
        struct.pack("<I", each["color2"]) if newer else b"",
        struct.pack("<iiii", each["lineType"], each["lineSize"], each["pgnType"], each["pntType"]),
        b"".join(flag(each[name], noise) for name in ("dspFlg", "outLine", "spareFlg", "fillMode", "imgMode")),
        struct.pack("<i", each["imgPos"]) if newer else b"",
        chars(each["imgfname"], 512, noise),
        chars(each["imgactfname"], 512, noise),
        struct.pack("<iidd", each["bmWidth"], each["bmHeight"], each["imgMinScl"], each["imgMaxScl"]),
        unread(16, noise) if newer else b"",
    ])


def layer_file(version, layers, noise=False):
    return header("Ovl", version, noise) + b"".join(layer_record(version, each, noise) for each in layers)


# --- Data, binary ----------------------------------------------------------------------------------------------------------


def claimed(item, name, value):
    return item.get("claims", {}).get(name, value)


def has_mesh(item):
    return claimed(item, "mesh", item["meshAttr"] is not None)


def has_string(item):
    return claimed(item, "string", item["str"] is not None)


def head(version, code, mesh_no, item, noise=False):
    newer = version == "1.10"
    return b"".join([
        chars(code, 51, noise),
        struct.pack("<ii", mesh_no, item["datID"]),
        struct.pack("<iiii", *item["rect"]),
        struct.pack("<i", claimed(item, "pntCnt", len(item["pnts"] or []))),
        struct.pack("<b", as_byte(item["lineTag"])),
        flag(has_mesh(item), noise) if newer else b"",
        flag(has_string(item), noise),
        unread(4, noise) if newer else b"",
    ])


def points_part(item):
    return b"".join(struct.pack("<ddd", *point) for point in item["pnts"] or [])


def mesh_part(item, noise=False):
    mesh = item["meshAttr"]
    return b"".join([
        struct.pack("<ii", mesh["hcnt"], mesh["vcnt"]), unread(1, noise),
        bytes(mesh["useFlag"]),
        b"".join(struct.pack("<I", color) for color in mesh["meshColor"]),
    ])


def string_part(item, noise=False):
    it = item["str"]
    return b"".join([
        struct.pack("<ddd", it["x"], it["y"], it["z"]),
        chars(it["fntname"], 65, noise),
        struct.pack("<bb", as_byte(it["size"]), as_byte(it["style"])),
        flag(it["fill"], noise),
        struct.pack("<b", as_byte(it["pos"])),
        flag(it["uline"], noise), flag(it["strike"], noise),
        struct.pack("<dII", it["angle"], it["fcolor"], it["bcolor"]),
        struct.pack("<i", claimed(item, "textLen", len(it["text"]))),
        it["text"],
    ])


def data_record(version, code, mesh_no, item, noise=False):
    mesh = version == "1.10" and item["meshAttr"] is not None
    return b"".join([
        head(version, code, mesh_no, item, noise),
        points_part(item),
        mesh_part(item, noise) if mesh else b"",
        string_part(item, noise) if item["str"] is not None else b"",
    ])


def items_of(blocks):
    return [(block["code"], block["meshNo"], item) for block in blocks for item in block["items"]]


def data_records(version, blocks, noise=False):
    return [data_record(version, *each, noise) for each in items_of(blocks)]


def data_file(version, blocks, noise=False):
    return header("Ovb", version, noise) + b"".join(data_records(version, blocks, noise))


# --- Index and manage ------------------------------------------------------------------------------------------------------


def block_record(code, bounds, count, first, noise=False):
    return chars(code, 51, noise) + struct.pack("<ddddii", *bounds, count, first)


def item_record(rect, offset):
    return struct.pack("<iiiii", *rect, offset)


def index_file(version, blocks, noise=False):
    first, offset, block_records, item_records = 0, HEADER_SIZE, [], []
    for block in blocks:
        block_records.append(block_record(block["code"], block["bounds"], len(block["items"]), first, noise))
        first += len(block["items"])
    for (_, _, item), record in zip(items_of(blocks), data_records(version, blocks)):
        item_records.append(item_record(item["rect"], offset))
        offset += len(record)
    counts = struct.pack("<ii", len(block_records), len(item_records))
    return header("Ovi", version, noise) + counts + b"".join(block_records) + b"".join(item_records)


def manage_record(block, noise=False):
    return (chars(block["code"], 51, noise) + struct.pack("<i", block["meshNo"]) + chars(block["path"], 512, noise)
            + struct.pack("<dd", block["GX"], block["GY"]))


def manage_file(version, blocks, noise=False):
    """None where no block has a path, since there is no such file then."""
    records = [manage_record(block, noise) for block in blocks if block["path"]]
    return header("Ovm", version, noise) + b"".join(records) if records else None


# --- Data, text ------------------------------------------------------------------------------------------------------------


def head_line(version, code, mesh_no, item):
    left, top, right, bottom = item["rect"]
    fields = [mesh_no, item["datID"], top, left, bottom, right, claimed(item, "pntCnt", len(item["pnts"] or [])),
              as_byte(item["lineTag"])]
    string = int(has_string(item))
    fields += [int(has_mesh(item)), string, 0] if version == "1.10" else [string]
    return b"DH," + code + b"," + ",".join(map(str, fields)).encode()


def point_line(x, y, z):
    return (b"P,%.6f,%.6f,0.0" % (x, y)) if z == 0 else (b"P,%.6f,%.6f,%.6f" % (x, y, z))


def mesh_lines(mesh):
    return [b"MH,%d,%d,0" % (mesh["hcnt"], mesh["vcnt"]), *(b"M1,%d" % each for each in mesh["useFlag"]),
            *(b"M2,%d" % as_i32(color) for color in mesh["meshColor"])]


def string_lines(it):
    numbers = (as_byte(it["size"]), as_byte(it["style"]), it["fill"], as_byte(it["pos"]), it["uline"], it["strike"])
    return [b"SH,%.6f,%.6f,%.6f," % (it["x"], it["y"], it["z"]) + b"%d,%d,%d,%d,%d,%d," % numbers
            + b"%.6f,%d,%d" % (it["angle"], as_i32(it["fcolor"]), as_i32(it["bcolor"])),
            b"FN," + it["fntname"], b"S," + it["text"]]


def text_lines(version, code, mesh_no, item):
    lines = [head_line(version, code, mesh_no, item), *(point_line(*point) for point in item["pnts"] or [])]
    if version == "1.10" and item["meshAttr"] is not None:
        lines += mesh_lines(item["meshAttr"])
    return lines + (string_lines(item["str"]) if item["str"] is not None else [])


def text_file(version, blocks, line_end=b"\r\n"):
    lines = [TITLES["Ovt"] + version.encode()]
    for each in items_of(blocks):
        lines += text_lines(version, *each)
    return b"".join(line + line_end for line in lines)


# --- The set ---------------------------------------------------------------------------------------------------------------


def files(version, layers, blocks, noise=False):
    """The binary set as {extension: bytes}, without the files that such a map does not have."""
    told = {"Ovl": layer_file(version, layers, noise), "Ovb": data_file(version, blocks, noise),
            "Ovi": index_file(version, blocks, noise), "Ovm": manage_file(version, blocks, noise)}
    return {extension: content for extension, content in told.items() if content is not None}
