#!/usr/bin/env python3
"""What data/make-data rejects: mistakes in the tables, and the message for each."""

import pathlib
import shutil
import subprocess
import sys
import tempfile
import unittest

DATA = pathlib.Path(__file__).resolve().parents[2] / "data"

# Table, text that it contains once or more, the replacement of the first of them, a part of the message.
SLIPS = [
    ("devices", "XC9500XL,XC9572XL,09604093,", "XC9500XL,XC9572XL,09604193,", "XC9572XL: the manufacturer field of 0x09604193 is not one of"),
    ("devices", "XC9500XL,XC9572XL,09604093,", "XC9500XL,XC9572XL,09604092,", "XC9572XL: bit 0 of the IDCODE is not 1"),
    ("devices", "XC9500XL,XC9572XL,09604093,", "XC9500XL,XC9572XL,59604093,", "XC9572XL: the IDCODE has bits outside its mask"),
    ("devices", "XC9500XL,XC9572XL,09604093,", "XC9500XL,XC9572XL,9604093,", "XC9572XL: idcode_hex is not 8 hex digits: '9604093'"),
    ("devices", "XC9500XL,XC9572XL,09604093,", "XC9500XL,XC9572XL,,", "XC9572XL: no idcode_hex"),
    ("devices", "XC9500XL,XC9572XL,09604093,0FFFFFFF,8,FE,FF", "XC9500XL,XC9572XL,09604093,0FFFFFFF,8,FE,7F", "XC9572XL: BYPASS is not all ones"),
    ("devices", "XC9500XL,XC9572XL,09604093,0FFFFFFF,8,FE,FF", "XC9500XL,XC9572XL,09604093,0FFFFFFF,8,FE,", "XC9572XL: BYPASS is not all ones"),
    ("devices", "XC9500XL,XC9572XL,09604093,0FFFFFFF,8,FE", "XC9500XL,XC9572XL,09604093,0FFFFFFF,,FE", "XC9572XL: no ir_length"),
    ("devices", "XC9500XL,XC9572XL,09604093,0FFFFFFF,8,FE", "XC9500XL,XC9572XL,09604093,0FFFFFFF,x,FE", "XC9572XL: ir_length is not a length"),
    ("devices", "XC9500XL,XC9572XL,09604093,0FFFFFFF", "XC9500XL,XC9572XL,09604093,0FFFF0FF", "XC9572XL: the mask leaves out bits of the manufacturer"),
    ("devices", "XC9500XL,XC9572XL,", "XC9500XL,xc9536xl,", "is there twice"),
    ("devices", "Xilinx,XC9500XL,XC9572XL,", "Xilnx,XC9500XL,XC9572XL,", "XC9572XL: its maker is not in makers.csv: 'Xilnx'"),
    ("devices", "Xilinx,XC9500XL,XC9572XL,", "Xilinx,MAX II,XC9572XL,", "xilinx.xml: another file has a family of the same name"),
    ("devices", "maker,family,device", "maker,family,devices", "the columns have to be"),
    ("devices", "Xilinx,XC9500XL,XC9572XL,", "Xilinx,XC9572XL,", "too many or too few fields"),
    # The walk: XCKU9P has to come before XCR3064XL, and logic before a neighbour.
    ("neighbours", "ARM JTAG-DP (ADIv5) revision 1,ARM,1BA00477,FFFFFFFF", "ARM JTAG-DP (ADIv5) revision 1,ARM,0B000477,0F0FFFFF",
     "match one IDCODE, and the mask of the first is not the more exact one"),
    ("neighbours", "ARM JTAG-DP (ADIv5) revision 1,ARM,1BA00477,FFFFFFFF", "ARM JTAG-DP (ADIv5) revision 1,Xilinx,09604093,0FFFFFFF",
     "(neighbours.xml) and XC9572XL (xilinx.xml) match one IDCODE: logic has to come first"),
    ("packages", "XC9572XL,VQ44,", "XC9573XL,VQ44,", "packages.csv: no such device, or no package: XC9573XL VQ44"),
    ("packages", "EP1C12,FBGA256,EP1C12F256", "EP1C12,FBGA256,XC9572XL-VQ44", "XC9572XL-VQ44 is a package of EP1C12 and of XC9572XL"),
    ("packages", "EP1C12,FBGA256,EP1C12F256", "EP1C12,FBGA256,xc9572xl_vq44", "is a package of EP1C12 and of XC9572XL"),
    ("fuses", "XC9572XL,46656", "XC9573XL,46656", "fuses.csv: no such device: XC9573XL"),
    ("fuses", "XC9572XL,46656", "XC9572XL,46 656", "XC9572XL: fuse_count is not a number"),
    ("fuses", "XC9572XL,46656", "XC9572XL,46657", "xilinx.xml is not what the tables give"),
    ("makers", "Gowin,gowin,40D", "Gowin,gowin,40E", "the manufacturer field of 0x0900281B is not one of Gowin's"),
    ("makers", "Gowin,gowin,40D", "Gowin,,40D", "makers.csv names no file for Gowin"),
]


def run(folder):
    return subprocess.run([sys.executable, folder / "make-data", "--check"], capture_output=True, text=True, check=False)


class MakeData(unittest.TestCase):
    def setUp(self):
        self.temporary = tempfile.TemporaryDirectory()
        self.addCleanup(self.temporary.cleanup)
        self.folder = pathlib.Path(self.temporary.name) / "data"
        shutil.copytree(DATA, self.folder)

    def test_accepts_what_is_here(self):
        done = run(self.folder)
        self.assertEqual((done.returncode, done.stderr), (0, ""))

    def test_refuses_slips(self):
        for table, text, slip, message in SLIPS:
            with self.subTest(table=table, slip=slip):
                path = self.folder / "tables" / f"{table}.csv"
                before = path.read_text(encoding="utf-8")
                self.assertIn(text, before)
                path.write_text(before.replace(text, slip, 1), encoding="utf-8")
                done = run(self.folder)
                path.write_text(before, encoding="utf-8")
                self.assertEqual(done.returncode, 1)
                self.assertNotIn("Traceback", done.stderr)
                self.assertIn(message, done.stderr)

    def test_refuses_files_of_no_table(self):
        (self.folder / "own.xml").write_text("<DeviceDatabase/>")
        self.assertIn("own.xml: no table gives it", run(self.folder).stderr)


if __name__ == "__main__":
    unittest.main()
