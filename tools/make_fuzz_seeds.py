#!/usr/bin/env python3
"""Writes the seeds of the fuzz targets that are made by hand: fuzz/corpus/<target>/<name>.

usage: tools/make_fuzz_seeds.py [FOLDER]      FOLDER: fuzz/corpus without it

A seed is the least that leads into a part of a parser. Others beside them, named by their hash, were found by
the fuzzer and kept by tools/fuzz_seeds.sh.
"""
import io
import pathlib
import struct
import sys
import zipfile

ROOT = pathlib.Path(__file__).resolve().parent.parent
SEEDS = {}


def seed(target, name, data):
    SEEDS.setdefault(target, {})[name] = data.encode() if isinstance(data, str) else bytes(data)


def utf16(text):
    return text.encode("utf-16-le")


def aligned(data, step=8):
    return data + bytes(-len(data) % step)


# NTFS: the layouts are those of the Linux-NTFS project's documentation.
RECORD, CLUSTER = 1024, 4096
STANDARD, LIST, FILE_NAME, VOLUME_NAME, DATA, ROOT_INDEX, ALLOCATION = 0x10, 0x20, 0x30, 0x60, 0x80, 0x90, 0xA0


def reference(number, sequence=1):
    return number | sequence << 48


def resident(kind, value, name=""):
    at = len(aligned(bytes(24) + utf16(name)))
    body = aligned(bytes(24) + utf16(name)) + value
    length = len(aligned(body))
    head = struct.pack("<IIBBHHHIHH", kind, length, 0, len(name), 24, 0, 0, len(value), at, 0)
    return aligned(head + body[24:])


def non_resident(kind, runs, size, name="", lowest=0, initialized=None):
    body = aligned(bytes(64) + utf16(name))
    at = len(body)
    length = len(aligned(body + runs))
    head = struct.pack("<IIBBHHHQQHHIQQQ", kind, length, 1, len(name), 64, 0, 0, lowest, 0, at, 0, 0,
                       size, size, size if initialized is None else initialized)
    return aligned(head + body[64:] + runs)


def standard(created=133 * 10**15, modified=133 * 10**15, attributes=0x20, usn=0, long_form=True):
    value = struct.pack("<QQQQI", created, modified, modified, modified, attributes)
    return resident(STANDARD, value.ljust(64, b"\0") + struct.pack("<Q", usn) if long_form else value.ljust(48, b"\0"))


def file_name_value(parent, name, space=1):
    return struct.pack("<Q", parent).ljust(64, b"\0") + bytes([len(name), space]) + utf16(name)


def file_name(name, parent=reference(5), space=1):
    return resident(FILE_NAME, file_name_value(parent, name, space))


def listed(*entries):
    """Entries of an $ATTRIBUTE_LIST: (type, lowest VCN, holder, name)."""
    value = b""
    for kind, lowest, holder, name in entries:
        body = utf16(name)
        length = len(aligned(bytes(26) + body))
        value += aligned(struct.pack("<IHBBQQH", kind, length, len(name), 26, lowest, holder, 0) + body)
    return value


def runs(*pairs):
    """Mapping pairs of (cluster or None for a hole, clusters)."""
    data, before = b"", 0
    for cluster, count in pairs:
        if cluster is None:
            data += struct.pack("<Bh", 0x02, count)
        else:
            data += struct.pack("<Bhi", 0x42, count, cluster - before)
            before = cluster
    return data + b"\0"


def fixed_up(block, table):
    block = bytearray(block)
    struct.pack_into("<HH", block, 4, table, len(block) // 512 + 1)
    struct.pack_into("<H", block, table, 7)
    for i in range(len(block) // 512):
        end = (i + 1) * 512 - 2
        block[table + 2 + 2 * i:table + 4 + 2 * i] = block[end:end + 2]
        struct.pack_into("<H", block, end, 7)
    return bytes(block)


def record(*attributes, folder=False, in_use=True, sequence=1, base=0):
    body = b"".join(attributes) + struct.pack("<II", 0xFFFFFFFF, 0)
    flags = (1 if in_use else 0) | (2 if folder else 0)
    head = struct.pack("<4sHHQHHHHIIQ", b"FILE", 0, 0, 0, sequence, 1, 56, flags, 56 + len(body), RECORD, base)
    return fixed_up((head.ljust(56, b"\0") + body).ljust(RECORD, b"\0"), 48)


def entries(*names):
    data = b""
    for number, name in names:
        key = file_name_value(0, name)
        data += aligned(struct.pack("<QHHI", reference(number), len(aligned(bytes(16) + key)), len(key), 0) + key)
    return data + struct.pack("<QHHI", 0, 16, 0, 2)


def index_root(*names):
    body = entries(*names)
    return bytes(16) + struct.pack("<IIII", 16, 16 + len(body), 16 + len(body), 0) + body


def index_block(*names, size=CLUSTER):
    body = entries(*names)
    head = b"INDX".ljust(24, b"\0") + struct.pack("<IIII", 40, 40 + len(body), size - 24, 0)
    return fixed_up((head.ljust(64, b"\0") + body).ljust(size, b"\0"), 40)


def mft(records, count, extra=b"", at=4):
    """`count` records, those of the dict in their places; `extra` stands in the clusters behind them."""
    size = count * RECORD
    clusters = -(-size // CLUSTER)
    first = record(standard(), file_name("$MFT"), non_resident(DATA, runs((at, clusters)), size))
    root = record(standard(), file_name("."), folder=True)
    table = {0: first, 5: root, **records}
    whole = b"".join(table.get(i, bytes(RECORD)) for i in range(count))
    return whole.ljust(clusters * CLUSTER, b"\0") + extra if extra else whole


def boot_sector(sector=512, per_cluster=8, sectors=1 << 20, table=4, mirror=2, record_size=0xF6, index_size=1):
    data = bytearray(512)
    data[3:11] = b"NTFS    "
    struct.pack_into("<HB", data, 11, sector, per_cluster)
    struct.pack_into("<QQQ", data, 40, sectors, table, mirror)
    data[64], data[68] = record_size, index_size
    struct.pack_into("<Q", data, 72, 0x1122334455667788)
    struct.pack_into("<H", data, 510, 0xAA55)
    return bytes(data)


# Records of the change journal (winioctl.h).
CREATE, DELETE, OLD_NAME, NEW_NAME, CLOSE = 0x100, 0x200, 0x1000, 0x2000, 0x80000000


def usn2(frn, parent, name, reason, attributes=0x20, usn=0, length=None):
    text = utf16(name)
    whole = len(aligned(bytes(60) + text)) if length is None else length
    head = struct.pack("<IHHQQqQIIIIHH", whole, 2, 0, frn, parent, usn, 0, reason, 0, 0, attributes, len(text), 60)
    return aligned(head + text)


def usn3(frn, parent, name, reason, high=0):
    text = utf16(name)
    head = struct.pack("<IHHQQQQqQIIIIHH", len(aligned(bytes(76) + text)), 3, 0, frn, high, parent, 0, 0, 0, reason,
                       0, 0, 0x20, len(text), 76)
    return aligned(head + text)


def usn_block(*records):
    return bytes(8) + b"".join(records)


def ntfs_seeds():
    for name, sector in {
            "typical": boot_sector(),
            "large_clusters": boot_sector(per_cluster=0xF4, record_size=0xF6, index_size=0xF4),
            "cluster_of_a_sector": boot_sector(per_cluster=1, record_size=2, index_size=8),
            "sectors_of_4096": boot_sector(sector=4096, per_cluster=1, record_size=1, index_size=1),
            "no_sectors": boot_sector(sectors=0),
            "too_many_sectors": boot_sector(sectors=1 << 60),
            "record_of_no_size": boot_sector(record_size=0),
            "exponent_out_of_range": boot_sector(per_cluster=0x90, record_size=0x80),
            "clusters_of_no_size": boot_sector(per_cluster=0),
            "odd_sector": boot_sector(sector=513),
            "no_signature": boot_sector()[:510] + b"\0\0",
            "other_file_system": b"\xEB\x3C\x90MSDOS5.0".ljust(512, b"\0"),
            "short": boot_sector()[:300]}.items():
        seed("boot_sector_fuzz", name, sector)

    plain = record(standard(), file_name("report.txt"), resident(DATA, b"some text"))
    spread = record(standard(), resident(LIST, listed((STANDARD, 0, reference(6), ""), (FILE_NAME, 0, reference(7), ""),
                                                     (DATA, 0, reference(7), ""), (DATA, 3, reference(8), ""))))
    seed("mft_record_fuzz", "plain", plain)
    seed("mft_record_fuzz", "attribute_list", spread)
    seed("mft_record_fuzz", "runs", record(standard(long_form=False), file_name("a", space=3), file_name("A~1", space=2),
                                           non_resident(DATA, runs((100, 3), (None, 5), (50, 2)), 40960),
                                           non_resident(DATA, b"", 0, name="stream")))
    seed("mft_record_fuzz", "torn", plain[:1022] + b"\x09\x09")
    seed("mft_record_fuzz", "value_outside", record(struct.pack("<IIBBHHHIHH", DATA, 24, 0, 0, 24, 0, 0, 99, 24, 0)))
    seed("mft_record_fuzz", "runs_outside", record(non_resident(DATA, b"", 0)[:32] + b"\xFF\xFF" + bytes(38)))
    seed("mft_record_fuzz", "name_outside", record(struct.pack("<IIBBHHHIHH", DATA, 24, 0, 9, 24, 0, 0, 0, 24, 0)))
    seed("mft_record_fuzz", "short_non_resident", record(struct.pack("<IIBBHHHIHH", DATA, 24, 1, 0, 24, 0, 0, 0, 24, 0)))
    seed("mft_record_fuzz", "index_block", index_block((24, "$UsnJrnl"), size=512))
    seed("mft_record_fuzz", "file_name", file_name_value(reference(5), "report.txt"))
    seed("mft_record_fuzz", "unknown_name_space", file_name_value(reference(5), "x", space=4))
    seed("attribute_list_fuzz", "typical", listed((STANDARD, 0, reference(6), ""), (DATA, 0, reference(7), "$J"),
                                                  (DATA, 9, reference(8), "$J")))
    seed("attribute_list_fuzz", "name_outside", struct.pack("<IHBBQQH", DATA, 26, 9, 26, 0, 0, 0))
    seed("attribute_list_fuzz", "short_entry", struct.pack("<IHBBQQH", DATA, 8, 0, 26, 0, 0, 0))
    seed("data_runs_fuzz", "typical", runs((100, 3), (None, 5), (50, 2)))
    seed("data_runs_fuzz", "before_the_volume", runs((100, 3)) [:-1] + struct.pack("<Bhi", 0x42, 2, -500))
    seed("data_runs_fuzz", "outside", runs((90000, 3)))
    seed("data_runs_fuzz", "too_wide", b"\x9A" + bytes(20))
    seed("data_runs_fuzz", "no_length", b"\x10\x01")
    seed("data_runs_fuzz", "negative_length", b"\x11\xFF\x01")
    seed("data_runs_fuzz", "short", b"\x88\x01")
    seed("data_runs_fuzz", "endless", b"\x08" + b"\xFF" * 7 + b"\x7F\0")


def volume_seeds():
    journal = usn2(reference(6), reference(5), "report.txt", CREATE | CLOSE) + usn3(reference(7), reference(5), "b", DELETE)
    maximum = struct.pack("<QQQQ", 0x2000000, 0x400000, 0x1234, 0)
    named = {
        6: record(standard(), file_name("folder"), folder=True),
        7: record(standard(usn=64), file_name("REPORT~1.TXT", reference(6), 2), file_name("report.txt", reference(6)),
                  resident(DATA, b"some text")),
        8: record(standard(attributes=0x10), file_name("data.bin"), non_resident(DATA, runs((5, 2)), 5000)),
        9: record(in_use=False),
        10: record(standard(), resident(LIST, listed((FILE_NAME, 0, reference(12), ""), (DATA, 0, reference(12), ""),
                                                     (DATA, 2, reference(13), "")))),
        11: record(standard(), file_name("$Extend"),
                   resident(ROOT_INDEX, index_root((14, "$UsnJrnl")), "$I30"), folder=True),
        12: record(file_name("listed.txt"), non_resident(DATA, runs((5, 2)), 12000), base=reference(10)),
        13: record(non_resident(DATA, runs((7, 1)), 0, lowest=2), base=reference(10)),
        14: record(standard(), file_name("$UsnJrnl", reference(11)),
                   non_resident(DATA, runs((None, 1), (8, 1)), CLUSTER + len(journal), "$J"),
                   resident(DATA, maximum, "$Max")),
        15: record(standard(), file_name("x" * 200), resident(DATA, b"", "stream"))}
    whole = mft(named, 16, journal.ljust(512, b"\0"))
    for target in ("ntfs_volume_fuzz", "mft_facts_fuzz", "volume_build_fuzz"):
        seed(target, "with_journal", whole)
    blocks = dict(named)
    del blocks[14]
    blocks[11] = record(standard(), file_name("$Extend"), resident(ROOT_INDEX, index_root((3, "$Quota")), "$I30"),
                        non_resident(ALLOCATION, runs((8, 1)), CLUSTER, "$I30"), folder=True)
    seed("ntfs_volume_fuzz", "large_extend", mft(blocks, 16, index_block((14, "$UsnJrnl"))))
    small = {i: named[i] for i in (6, 7)}
    cyclic = {6: record(standard(), file_name("a", reference(7)), folder=True),
              7: record(standard(), file_name("b", reference(6)), folder=True)}
    dates = {6: record(standard(created=1 << 63, modified=1 << 63), file_name("never"), resident(DATA, b"")),
             7: record(standard(), file_name("huge"), non_resident(DATA, runs((None, 9)), 1 << 63))}
    lists = {6: record(standard(), file_name("listed"), non_resident(LIST, runs((6, 1)), 96)),
             7: record(non_resident(DATA, runs((4, 1)), 4096), base=reference(6))}
    list_value = listed((STANDARD, 0, reference(6), ""), (FILE_NAME, 0, reference(6), ""), (DATA, 0, reference(7), ""))
    for target in ("ntfs_volume_fuzz", "mft_facts_fuzz", "volume_build_fuzz"):
        seed(target, "small", mft(small, 8))
    seed("volume_build_fuzz", "no_files", mft({0: record(standard(), non_resident(DATA, runs((4, 2)), 8 * RECORD)),
                                               5: bytes(RECORD)}, 8))
    for call, end in ((1, 0), (2, 1), (3, 2), (4, 3), (5, 0)):
        seed("volume_build_fuzz", f"call_{call}_fails", mft(small, 8) + bytes([call | end << 3]))
    seed("volume_build_fuzz", "folders_within_each_other", mft(cyclic, 8))
    seed("mft_facts_fuzz", "beyond_the_calendar", mft(dates, 8))
    seed("mft_facts_fuzz", "list_of_its_own", mft(lists, 8, list_value))
    spread = {6: record(standard(), file_name("x"), folder=True)}
    parts = {0: record(standard(), resident(LIST, listed((DATA, 0, reference(0), ""), (DATA, 1, reference(1), ""))),
                       file_name("$MFT"), non_resident(DATA, runs((4, 1)), 8 * RECORD)),
             1: record(non_resident(DATA, runs((5, 1)), 0, lowest=1), base=reference(0)), **spread}
    seed("mft_facts_fuzz", "table_in_two_parts", mft(parts, 8))
    seed("ntfs_volume_fuzz", "table_in_two_parts", mft(parts, 8))

    label = {3: record(standard(), file_name("$Volume"), resident(VOLUME_NAME, utf16("System")))}
    sector = boot_sector(per_cluster=1, sectors=10, table=2, record_size=2, index_size=1)
    image = sector.ljust(1024, b"\0") + mft(label, 4, at=2).replace(runs((2, 1)), runs((2, 8)))
    seed("image_info_fuzz", "labelled", image)
    seed("image_info_fuzz", "damaged", image[:1500])
    seed("image_info_fuzz", "no_ntfs", b"text")


def index_seeds():
    def folder(root, blocks=b""):
        return struct.pack("<H", len(root)) + root + blocks

    root = index_root((24, "$UsnJrnl"), (25, "$Quota"))
    seed("folder_index_fuzz", "in_the_root", folder(root))
    seed("folder_index_fuzz", "in_a_block", folder(index_root(), index_block((24, "$USNJRNL"), (26, "x"))[:600]))
    whole = index_block((24, "a")), index_block((24, "$UsnJrnl"))
    seed("folder_index_fuzz", "in_the_second_block", folder(index_root((2, "b")), whole[0] + whole[1]))
    seed("folder_index_fuzz", "damaged_block", folder(root[:40], whole[0][:510] + b"\xFF\xFF" + whole[0][512:]))
    seed("folder_index_fuzz", "key_outside", folder(root[:42] + b"\xFF\xFF" + root[44:]))

    first = usn2(reference(30), reference(5), "new.txt", CREATE)
    others = [usn2(reference(30), reference(5), "new.txt", CREATE | CLOSE), usn3(reference(31), reference(5), "old", DELETE),
              usn3(reference(31), reference(5), "long", DELETE, high=1), b"\x40\0\0\0\4\0\0\0".ljust(64, b"\0"),
              usn2(reference(32), reference(5), "odd", NEW_NAME)[:56] + b"\x05" + bytes(7)]
    page = (first + b"".join(others)).ljust(4096, b"\0")
    seed("change_journal_fuzz", "page_and_more", b"\1" + page + first)
    seed("change_journal_fuzz", "only_changes", b"\4" + first + others[0] + others[1])
    seed("change_journal_fuzz", "only_closed", b"\x0A" + first + others[0])
    seed("change_journal_fuzz", "empty", b"\2")
    seed("change_journal_fuzz", "many", b"\0" + b"".join(
        usn2(reference(i), reference(5), f"file {i}", CREATE | CLOSE) for i in range(100)))
    seed("change_journal_fuzz", "bad_length", b"\0" + first + b"\x41\0\0\0" + bytes(60))
    seed("change_journal_fuzz", "name_outside", b"\0" + first[:56] + b"\xFF\xFF" + first[58:])
    seed("change_journal_fuzz", "short_record", b"\0\x28\0\0\0\2\0".ljust(41, b"\0") + first)

    seed("usn_block_fuzz", "typical", usn_block(first, others[0], others[4]))
    seed("usn_block_fuzz", "bad_length", usn_block(first, b"\x20\0\0\0".ljust(64, b"\0")))
    seed("usn_block_fuzz", "backslash", usn_block(usn2(1, 2, "a\\b", CREATE)))
    seed("usn_block_fuzz", "name_outside", usn_block(first[:56] + b"\xFF\xFF" + first[58:]))
    life = usn_block(usn2(reference(40), reference(5), "folder", CREATE, 0x10),
                     usn2(reference(41), reference(40), "新建.txt", CREATE),
                     usn2(reference(41), reference(5), "moved.txt", NEW_NAME),
                     usn2(reference(40), reference(5), "folder", DELETE),
                     usn2(reference(5), reference(5), ".", CREATE, 0x10))
    seed("journal_block_fuzz", "life_of_a_file", life)
    again = usn_block(usn2(40, 5, "a\0b", CREATE), usn2(40, 5, "a\0b", DELETE), usn2(40, 5, "新", CREATE))
    seed("journal_block_fuzz", "gone_and_back", again + bytes(len(again)))
    seed("journal_block_fuzz", "twice", usn_block(usn2(reference(40), reference(5), "folder", CREATE, 0x10)) * 2)
    seed("journal_block_fuzz", "cycle", usn_block(usn2(1, 2, "a", CREATE, 0x10), usn2(2, 1, "b", CREATE, 0x10)))


def platform_seeds():
    seed("sector_reads_fuzz", "good", struct.pack("<BQB", 60, 0, 0) + struct.pack("<HHHH", 0, 8192, 700, 5000))
    seed("sector_reads_fuzz", "bad_sector", struct.pack("<BQB", 60, 1 << 9, 0) + struct.pack("<HHHH", 0, 8192, 4096, 900))
    seed("sector_reads_fuzz", "all_or_nothing", struct.pack("<BQB", 19, 1 << 9, 1) + struct.pack("<HHHH", 0, 8192, 9000, 900))
    seed("host_path_fuzz", "plain", "/srv/data\n/srv/data/./a//b/../c")
    seed("host_path_fuzz", "odd_names", b"/\n/a\\b/\xFF\xFE/\xC3\xA4")
    seed("host_path_fuzz", "longer_than_a_call", "/x\n" + "./" * 2060 + "proc/self")
    seed("host_path_fuzz", "long_name", "/x\n" + "n" * 4200)
    seed("host_path_fuzz", "long_and_missing", "/x\n" + "nowhere/" * 600)
    seed("host_path_fuzz", "relative", "x/y\nz/..")
    seed("console_fuzz", "lines", "report\r\n\nlast")
    seed("console_fuzz", "returns", "a\rb\r\r\n\r")
    seed("folder_listing_fuzz", "plain", "report.txt\nfolder/\n.hidden")
    seed("folder_listing_fuzz", "odd_names", b"a\\b\n\xFF\xFE\n\xE6\x96\xB0.txt\nlong name of nine\\\n")
    seed("text_fuzz", "cases", b"\x14" + utf16("Report.TXTreport.txt ÄÖÜ and more letters"))
    seed("text_fuzz", "prefix", b"\4" + utf16("abABC"))
    seed("code_pages_fuzz", "western", utf16("café € “x”"))
    seed("code_pages_fuzz", "outside", utf16("新建 \U0001F600"))
    seed("code_pages_fuzz", "half_a_pair", utf16("a") + b"\x3D\xD8")
    seed("utf_fuzz", "text", "aä€\U0001F600\\")
    seed("utf_fuzz", "malformed", b"a\xFF\xC0\x80\xED\xA0\x80\xF4\x90\x80\x80\xE2\x82")
    seed("text_file_fuzz", "typical", b"\xEF\xBB\xBFkey=value\r\nlabel = a b \r\n\r\nno pair\r\n")
    seed("text_file_fuzz", "utf16", b"\xFF\xFE" + utf16("key=値\r\nn=-2147483649\r\n"))
    seed("text_file_fuzz", "odd_utf16", b"\xFF\xFE" + utf16("key=1")[:-1])
    seed("text_file_fuzz", "numbers", "a= +12\nb=99999999999\nc=-99999999999\nd=x\n")
    seed("text_file_fuzz", "long_line", "key=" + "x" * 300 + "\n=\n")
    for name, text in {"typical": "%d files in %s, %.2f MB (%05u, 0x%08X)", "flags": "%-8s|%+d|% i|%#x|%08.3f|%c|%5%|%%",
                       "lengths": "%hhd %lld %zu %I64u %jd %td %ws", "broken": "%", "wide": "%99999d%.99999f%*d%q%-"}.items():
        seed("format_fuzz", name, utf16(text))
    seed("user_dirs_fuzz", "quoted", 'XDG_DESKTOP_DIR="$HOME/a\\"b"\n  XDG_DESKTOP_DIR = "/x/"\n# "\nXDG_DESKTOP_DIR="x\\')
    seed("user_dirs_fuzz", "home", 'XDG_DESKTOP_DIR="$HOME/"\n')


def config_seeds():
    window = ("width=1280\nheight=720\ncol0=80\ncol5=500\ncol9=50\ncol1=5\nsizePreset=4\ntimePreset=9\nsizeUnit=3\n"
              "sizeRange=10-20\ntimeStart=20240101\ntimeEnd=20241231\nfilterLayout=sidebar\nthemeMode=dark\n"
              "initialSearchEnabled=off\nviewMode=2\nglobalTrimOnToggle=1\ntableGridLines=false\n"
              "contentMaxFileSizeMB=99999999\ncontentSearchThreads=-4\ncontentSearchExts=.txt, md,,LOG\n")
    colors = "# colours\nsurface=FFFFFF\nTOOLBAR=#a0B1c2\neditWell = 123456\naccent=42B883\nborder=111111\ntext=12345\nrowSel=GG0000\n"
    dark = "surface=101010\naccent=42B883\nborder=202020\ntextHit=000000\nsearchHit=FFFFFF\nheader=808080\n"
    near = "surface=828282\ntextHit=808080\nsearchHit=818181\n"
    bright = "surface=F0F0F0\ntextHit=FFFFFF\nsearchHit=F8F8F8\n"
    hotkeys = "modifiers=3\nkey=90\nfg_modifiers=-1\nfg_key=4294967295\nkey\n"
    for target in ("settings_fuzz", "settings_files_fuzz"):
        for name, text in {"window": window, "colors": colors, "dark_colors": dark, "near_colors": near, "bright_colors": bright, "hotkeys": hotkeys,
                           "language": "lang = zh-cn \n", "empty": ""}.items():
            seed(target, name, text)
    seed("extension_list_fuzz", "typical", ".txt, md,LOG,,\t.Tar.gz ,ÄÖ")
    seed("extension_list_fuzz", "blanks", " , ,\t\r\n,.")
    for name, mask in {"all": 15, "chosen": 1, "temp_only": 8, "none": 0}.items():
        seed("config_directory_fuzz", name, bytes([mask]) + b"/etc/x//\n/home/me\n/home/me/.local\n/tmp/\n")
    seed("config_directory_fuzz", "backslashes", b"\1\\\\\\\n")


def search_seeds():
    table = "All=\nFolders=.dir\nDocuments=.doc,.PDF, txt\n# remark\n=.x\nno pair\nPictures = .jpg\n"
    for name, flags in {"typical": 0, "of_a_language": 1 | 4, "backup": 2 | 8, "chinese": 12}.items():
        seed("filter_categories_fuzz", name, bytes([flags]) + table.encode())
    seed("filter_categories_fuzz", "without_folders", b"\0Documents=.doc\n")
    seed("filter_categories_fuzz", "of_another_language", b"\5\xE6\x89\x80\xE6\x9C\x89\xE6\x96\x87\xE4\xBB\xB6=\nx=.y\n")
    seed("filter_categories_fuzz", "empty", b"\0")

    def texts(*items):
        return bytes([len(items)]) + b"".join(bytes([2 * len(item)]) + utf16(item) for item in items)

    seed("extension_table_fuzz", "typical", b"\2" + texts(".txt", ".PDF", "dot") + texts(".pdf", ".longer", ".") + utf16("a.b.pdf"))
    seed("extension_table_fuzz", "long", b"\1" + texts(".longer", ".tar\0", ".x\0") + utf16("name.longer"))
    seed("extension_table_fuzz", "no_dot", b"\1" + texts(".a") + utf16("name"))
    for name, text in {"both": "10-20", "least": "1.5 -", "most": "- 20 (or so)", "hex": "0x10-0x20", "reversed": "20-10",
                       "huge": "0-1e300", "not_a_number": "nan-inf", "negative": "--5", "wide": "１-2"}.items():
        seed("size_range_fuzz", name, text)

    def rows(*items):
        return b"".join(struct.pack("<BiH", flags, size, age) + name.encode() + b"\n" for flags, size, age, name in items)

    some = rows((0, 10, 1, "a.txt"), (1, 0, 1, "folder"), (2, 5, 5, "gone.pdf"), (4, 5 << 20, 5000, "B.PDF"),
                (8, 1, 1, "outside"), (0, 200 << 20, 60000, "old.jpg"), (0, 0x7FFFFFFF, 0, "Makefile"))

    def filters(category=0, size=0, time=0, unit=2, first=0, last=0, text="", sort=0):
        head = struct.pack("<bbbbii", category, size, time, unit, first, last) + text.encode() + b"\n"
        return head + b"Documents=.txt,.pdf\nFolders=.dir\n" + bytes([sort]) + some

    for name, data in {"off": filters(), "documents": filters(1), "folders": filters(2), "small": filters(0, 1),
                       "medium": filters(1, 2), "large": filters(0, 3), "range": filters(0, 4, text="1-100"),
                       "no_range": filters(0, 4, text="x"), "today": filters(time=1), "week": filters(time=2),
                       "month": filters(time=3, sort=1), "span": filters(0, 4, 4, 0, 20220101, 20221231, "0-"),
                       "reversed_span": filters(time=4, first=20221231, last=20210101),
                       "no_day": filters(time=4, first=20220231, last=20220101),
                       "no_span": filters(time=4, first=20, last=0), "unknown": filters(9, 9, 9, 9)}.items():
        seed("filters_fuzz", name, data)

    for name, text in {"groups": 'budget and "black and white" or \\"x\\" OR invoice', "content": "s:some text | .txt,md",
                       "path": '"C:/Users/me/"', "root": "C:\\", "blanks": " \t a  and  b ", "upper": "S: x",
                       "folder": "/proc/self/", "no_folder": "/proc/nowhere", "drive": "c:/"}.items():
        seed("query_fuzz", name, utf16(text))

    def names(needle, *items):
        return b"".join(bytes([2 * len(item)]) + utf16(item) for item in (needle, *items))

    seed("scan_kernel_fuzz", "typical", names("port", "Report.txt", "", "portport", "PORT", "por", "新port"))
    seed("scan_kernel_fuzz", "one_unit", names("a", "a", "b", "A" * 40, "xyz" * 20 + "a"))
    seed("scan_kernel_fuzz", "long", names("a needle of more than sixteen", "no", "A NEEDLE OF MORE THAN SIXTEEN units"))
    def block(needle, text):
        return bytes([len(needle)]) + needle + text

    seed("byte_search_fuzz", "typical", block(b"word", b"a word of a text, w\0o\0r\0d\0" * 9))
    seed("byte_search_fuzz", "one_byte", block(b"q", b"the text has none, and many bytes more than a step" * 3))
    seed("byte_search_fuzz", "utf8", block("Größe".encode(), "die Größe und ".encode() + "Größe".encode("cp1252")))
    seed("initials_fuzz", "typical", b"\2xj" + utf16("新建.txt"))
    seed("initials_fuzz", "mixed", b"\3a1x" + utf16("A1新.b"))

    def cache(*volumes, count=None):
        data = b"HCSV" + struct.pack("<II", 1, len(volumes) if count is None else count)
        for letter, journal, items in volumes:
            data += struct.pack("<HQI", ord(letter), journal, len(items))
            data += b"".join(struct.pack("<QqQQB", *item) for item in items)
        return data

    good = [(1, 100, 5, 6, 1), (2, 7, 5, 0, 1), (3, 7, 0, 0, 1), (4, 7, 5, 6, 0), (8, 1, 1, 1, 1), (99, 1, 1, 1, 1),
            (5, -1, 1, 1, 1), (6, 1, 1 << 63, 1, 1)]
    seed("attr_cache_fuzz", "two_volumes", cache(("C", 2, good), ("D", 9, good[:1])))
    seed("attr_cache_fuzz", "other_journal", cache(("C", 7, good[:2]), ("C", 1, good), ("E", 1, good[:1])))
    seed("attr_cache_fuzz", "short", cache(("C", 1, good), count=9)[:-5])
    seed("attr_cache_fuzz", "other_version", b"HCSV" + struct.pack("<II", 2, 0))
    seed("attr_cache_fuzz", "other_file", b"text")
    positions = [struct.pack("<HQq", ord(letter), 77, usn) for letter, usn in (("C", 4096), ("D", -1))]
    seed("attr_positions_fuzz", "two_volumes", b"QMAP" + struct.pack("<II", 1, 2) + b"".join(positions))
    seed("attr_positions_fuzz", "none", b"QMAP" + struct.pack("<II", 1, 0))
    seed("attr_positions_fuzz", "short", b"QMAP" + struct.pack("<II", 1, 2) + positions[0])
    seed("attr_positions_fuzz", "other_version", b"QMAP" + struct.pack("<II", 2, 0))


def console_seeds():
    for name, text in {
            "find": "find\nreport\n/srv\n--limit\n10\n--json", "filters":
            "find\n--ext\npdf,docx\n--category\ndocuments\n--size\n10M..2G\n--modified\n7d\n--sort\nsize:asc\n--totals\n\n/srv",
            "drives": "find\n--drive\nD=/srv\n--scope\nD:\nphoto\n--drive-paths\n-0\n--stats", "interactive":
            "find\n--interactive\n/srv\n/home", "interactive_json": "find\n--interactive\n--json",
            "watch": "watch\n--drive\nN=disk.img\n--limit\n5\n--for\n60\n--json", "no_query": "find", "no_command": "",
            "grep": "grep\n--ext\n.txt,md\n--threads\n2\n--max-size\n9\n--json\n--line\na and b\n/srv", "grep_count":
            "grep\n--count\n[x", "grep_contradiction": "grep\n-l\n--json\nx",
            "help": "--help", "version": "--version", "find_help": "find\n--help", "completion": "--completion\nbash",
            "other_shell": "--completion\nzsh", "brackets": "find\n[a,b]\n{}\n--drive\n[x]", "category": "find\nx\n--category\n[x",
            "bad_size": "find\nx\n--size\n10Q", "bad_date": "find\nx\n--modified\n2025-02-31", "bad_sort": "find\nx\n--sort\ncolour",
            "bad_extension": "find\nx\n--ext\n.tar.gz", "bad_limit": "find\nx\n--limit\n-1", "unknown": "find\n--colour\nx",
            "count": "find\n--count\n--initials\n.so\n--\n-x", "initials": "find\n--modified\n2025-01-01..2025-02-01\nx\n--sort=path"}.items():
        seed("options_fuzz", name, text)
    for name, text in {
            "span": "10M..2G", "least": "1.5k..", "most": "..2T", "decimals": "1.1234567", "no_decimals": "1.", "unit": "10Q",
            "too_large": "9999999999999999999", "reversed": "2..1", "empty": "..", "age": "7d", "weeks": "2W", "months": "1mo",
            "years": "1y", "long_ago": "200000d", "too_long": "999999y", "no_time": "0d", "unknown_age": "5h", "today": "today",
            "yesterday": "yesterday..today", "day": "2025-01-31", "no_day": "2025-02-31", "old_day": "1500-01-01",
            "days": "2025-01-01..2025-02-01", "to_day": "..2025-02-01", "from_day": "2025-02-01..", "reversed_days":
            "2025-02-01..2025-01-01", "last_day": "9999-12-31", "first_day": "1601-01-01", "extensions": "pdf, .DocX",
            "folders": "dir", "folders_and_more": "dir,txt", "dots": "tar.gz", "column": "SIZE", "ascending": "name:asc",
            "descending": "path:desc", "direction": "size:up", "category": "documents", "chinese": "文档", "leap": "29mo"}.items():
        seed("filter_options_fuzz", name, text)
    for name, text in {"paths": "all\n/srv\n/home", "drives": "D:\n-D=/srv\n-c=/x\n/home", "bad_drive": "all\n-D/srv",
                       "digit": "all\n-1=/srv", "folders": "all\nf\ni\n-D=l",
                       "empty_folder": "all\nf\na", "volume": "all\n-N=k\nf", "nowhere": "all\nj", "file": "all\nb",
                       "twice": "all\n-D=/a\n-d=/b", "no_path": "all", "empty_path": "desktop\n\n/x",
                       "bad_scope": "Q:\n/srv", "odd_scope": "drive\n/srv", "too_many": "all\n" + "/x\n" * 30}.items():
        seed("drive_plan_fuzz", name, text)
    for name, text in {"plain": " report \\and ", "content": "s:text", "no_content": "s:"}.items():
        seed("query_text_fuzz", name, text)
    seed("query_text_fuzz", "no_utf8", b"\xFF\\x \n")
    head = struct.pack("<QQQ", 5000, 2 * 133 * 10**15, 2 * 133 * 10**15)
    seed("hit_writer_fuzz", "plain", b"\0" + head + b"/srv/a \"b\"\\c\n\x01\x7F")
    seed("hit_writer_fuzz", "written", b"\x58" + head + b"name.txt")
    seed("hit_writer_fuzz", "no_utf8", b"\5" + head + b"\xFF\xC3\xA4")
    seed("hit_writer_fuzz", "units", b"\6" + head + utf16("C:\\新\U0001F600") + b"\x3D\xD8")


def shell_seeds():
    seed("command_line_fuzz", "hidden", "Quilmark.exe\n-HIDDEN")
    seed("command_line_fuzz", "slash", "a\n/hidden\nx")
    seed("command_line_fuzz", "name_only", "-hidden")
    seed("edit_text_fuzz", "lines", utf16("\r\n \tfirst\tline \r\nsecond"))
    seed("edit_text_fuzz", "path", utf16("C:\\Users\\me  and/or  "))
    seed("hotkey_text_fuzz", "named", struct.pack("<II", 15, 3) + utf16("Quilmark ({0})"))
    seed("hotkey_text_fuzz", "letter", struct.pack("<II", 1, 90) + utf16("Quilmark"))
    seed("hotkey_text_fuzz", "unknown", struct.pack("<II", 8, 200) + utf16("x" * 130))
    for name, old, text in (("same", "a.txt", "a.txt"), ("trimmed", "a.txt", "  b.txt. "), ("bad", "a", "a:b"),
                            ("device", "a", "CON.txt"), ("port", "a", "Com7"), ("empty", "a", "  "), ("good", "a", "新.tar.gz")):
        seed("rename_text_fuzz", name, old.encode() + b"\n" + utf16(text))
    seed("drop_files_fuzz", "two_paths", "C:\\a.txt\nD:\\dir\\b\n")
    seed("drop_files_fuzz", "left_out", "C:\\a\n\nC:\\b\0c\nD:\\Ж\U0001F600\n")
    seed("shell_paths_fuzz", "quotes", 'C:\\my dir\\a "b".txt\nc:\\MY DIR\\c\\\\"\nC:\\my dir\\\n')
    seed("shell_paths_fuzz", "odd_names", "C:\\dir\\a.\nC:\\dir\\..\nC:\\a:b\nC:\\x*\\y\nC:\\a/b\n")
    for name, text in (("lines", "12\tC:\\a.txt\r\n7\tD:\\b c\\文件\r\n"), ("twice", "1\tC:\\A\n2\tc:/a\n"), ("half", "99\tC:\\cu"),
                       ("foreign", "[section]\nkey=value\n\t\n-1\tx\n\tC:\\a"), ("long", "1\tC:\\" + "x" * 4095 + "\n2\tC:\\b\n"),
                       ("huge", "99999999999999999999999\tC:\\a")):
        seed("recent_file_fuzz", name, b"\xef\xbb\xbf" + text.encode())
    for name, fitting, box, text in (("twice", 9, "An", "banana an Ananas"), ("content", 4, "s: text |.txt", "some text here"),
                                     ("empty", 3, " ", "name"), ("pairs", 1, "\U0001F600", "\U0001F600\U0001F600x"),
                                     ("blanks", 5, "a", "a b  c   d a")):
        seed("highlight_fuzz", name, bytes([fitting]) + box.encode() + b"\n" + text.encode())


def archive(entries, method=zipfile.ZIP_DEFLATED, comment=b"", before=b""):
    """A ZIP archive of (name, data), with the same bytes each time."""
    data = io.BytesIO()
    data.write(before)
    with zipfile.ZipFile(data, "a" if before else "w", method) as made:
        for name, text in entries:
            made.writestr(zipfile.ZipInfo(name, (2020, 1, 1, 0, 0, 0)), text, method)
        made.comment = comment
    return data.getvalue()


def zip64(data):
    """The same archive with the wide form of its end."""
    at = data.rindex(b"PK\5\6")
    count, size, offset = struct.unpack_from("<HII", data, at + 10)
    wide = struct.pack("<4sQHHIIQQQQ", b"PK\6\6", 44, 45, 45, 0, 0, count, count, size, offset)
    return data[:at] + wide + struct.pack("<4sIQI", b"PK\6\7", 0, at, 1) + data[at:]


def content_seeds():
    document = "<w:p><w:r><w:t>Hel</w:t></w:r><w:r><w:t xml:space='preserve'>lo a</w:t></w:r></w:p>"
    plain = [("word/document.xml", document), ("content.xml", "<text:p>&#x4E2D;</text:p>")]
    whole = archive(plain)
    for name, data in (("office", whole), ("stored", archive(plain, zipfile.ZIP_STORED)), ("empty", archive([])),
                       ("behind_a_program", archive(plain, before=b"MZ program")), ("comment", archive(plain, comment=b"PK\5\6 end")),
                       ("zip64", zip64(whole)), ("folder", archive([("word/", ""), ("a\\b.xml", "<t>Hello a</t>")])),
                       ("encrypted", whole.replace(b"\x14\0\0\0\x08\0", b"\x14\0\1\0\x08\0")),
                       ("cut", whole[:-10]), ("wrong_crc", whole[:14] + b"\0\0\0\0" + whole[18:]),
                       ("twice", archive([("a.xml", document), ("b.xml", document)], zipfile.ZIP_STORED))):
        seed("zip_walk_fuzz", name, data)
    at = whole.rindex(b"PK\1\2")
    for name, place, value in (("large", 24, 0xFFFFFFFE), ("wide_size", 24, 0xFFFFFFFF), ("elsewhere", 42, 0xFFFFFF)):
        changed = bytearray(whole)
        struct.pack_into("<I", changed, at + place, value)
        seed("zip_walk_fuzz", name, changed)
    for name, text in (("runs", document), ("breaks", "<a:t>a</a:t><a:br/><tab /><c><v>1</v></c><row></row><TC/><t>b</T>"),
                       ("quotes", "<t a=\"x>y\" b='\">'>in</t><p q=\"><t>out"), ("entities", "<t>&amp;&lt;&gt;&quot;&apos;&#65;&#x4e2D;&#X1F600;"
                       "&#xD83D;&#0;&#1114112;&nbsp;&;&#;&#00000000000065;&#000000000000065;& </t>;"), ("sections", "<?x?><!-- a -->"
                       "<![CDATA[in <b> &amp; ]]>out<![CDATA[open"), ("blanks", b"<t> a \t\r\n\v\xA0b\xC2\xA0\xE3\x80\x80c\xE4\xB8\xA0 </t>"),
                       ("utf16", b"\xff\xfe" + utf16(document)), ("utf16_big", b"\xfe\xff" + document.encode("utf-16-be")),
                       ("mark", b"\xef\xbb\xbf" + document.encode()), ("ansi", b"<t>caf\xe9 \x80</t>"), ("loose", "a < b > c </ t >d<<>>")):
        seed("xml_text_fuzz", name, text)
        seed("xml_text_fuzz", name + "_asked", b"a l\n" + (text.encode() if isinstance(text, str) else text))
    for name, text in (("office", "word/header*.xml\nword/header12.xml"), ("all", "*\na"), ("nothing", "*\n"), ("end", "word/*\nword/"),
                       ("many", "*a*a*a*b\naaaaaaaaaaaaaa"), ("empty", "\n")):
        seed("entry_pattern_fuzz", name, text)
    for name, text in (("zip_exts", "\ufeff# comment\r\nexts=.docx,.pptx, .XLSX\r\n"), ("patterns", "patterns=Word/Document.xml\n*.xml,a b,\n"),
                       ("lines", ".a\n#.b\n\n  .c , d,.,,\nexts=e"), ("long", "x" * 2046 + ",y,." + "z" * 3000)):
        seed("list_files_fuzz", name, text)
    for name, data in (("no_codes", b"\5\0\0\0"), ("no_codes_and_more", b"\5\0\0\0\0\0\0\0"), ("stored", b"\1\5\0\xfa\xffHello"),
                       ("fixed", bytes.fromhex("4b4c02020b00")), ("one_symbol", bytes.fromhex("05c0810800000000" "20d6fd251e04")),
                       ("no_distances", bytes.fromhex("05c0810800000000" "20d6fd250e04")), ("bad_type", b"\7")):
        seed("inflate_fuzz", name, data)


def main():
    folder = pathlib.Path(sys.argv[1]) if len(sys.argv) == 2 else ROOT / "fuzz" / "corpus"
    if len(sys.argv) > 2:
        sys.exit(__doc__)
    for make in (ntfs_seeds, volume_seeds, index_seeds, platform_seeds, config_seeds, search_seeds, console_seeds, content_seeds, shell_seeds):
        make()
    for target, seeds in SEEDS.items():
        (folder / target).mkdir(parents=True, exist_ok=True)
        for name, data in seeds.items():
            (folder / target / name).write_bytes(data)
    print(f"{sum(map(len, SEEDS.values()))} seeds of {len(SEEDS)} targets, "
          f"{sum(len(data) for seeds in SEEDS.values() for data in seeds.values())} bytes")


if __name__ == "__main__":
    main()
