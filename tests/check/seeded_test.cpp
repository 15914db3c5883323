// A clean description, one edit, and the finding and its place.

#include <gtest/gtest.h>

#include <set>

#include "corpus.h"

namespace {

/// The first `from` becomes `to`, in which '@' marks each place where something is to be found: `codes`, in their order.
struct Row {
  const char* from;
  const char* to;
  const char* codes;
};

// clang-format off
const Row kRows[] = {
    // Identifiers
    {R"(jtagDeviceID="0x01235057")", R"(jtagDeviceID="@0x01235056")", "idcode-bit-0"},
    {R"(jtagDeviceID="0x01235057")", R"(jtagDeviceID="@0x01235059")", "maker-unlike"},
    {R"(jtagDeviceID="0x01234057")", R"(jtagDeviceID="@0x01234061")", "maker-unlike"},
    {R"(jtagDeviceID="0x01236057")", R"(jtagDeviceID="@0x01236157")", "maker-unlike"},
    {R"(jtagDeviceID="0x01236057")", R"(jtagDeviceID="@@0x012360FF")", "maker-invalid maker-unlike"},
    {R"(jtagDeviceID="0x02128059")", R"(jtagDeviceID="@0x021280FF")", "maker-invalid"},
    {R"(jtagDeviceID="0x02128059")", R"(jtagDeviceID="@0x021282FF")", "maker-invalid"},
    {R"(jtagDeviceID="0x01234057")", R"(jtagDeviceID="@@01234057")", "decimal-digits decimal-digits"},
    {R"(jtagDeviceID="0x01235057")", R"(jtagDeviceID="@11235057")", "decimal-digits"},
    {R"(jtagDeviceID="0x01236057")", R"(jtagDeviceID="@1236057")", "decimal-digits"},
    {R"(jtagDeviceID="0x01234057")", R"(jtagDeviceID="19087447")", ""},
    {R"(IDInstruction="0xE0" USERCODEIntruction="0xC0")", R"(IDInstruction="0xE0" USERCODEIntruction="@011")", "decimal-digits"},
    {R"(IDLength="32")", R"(IDLength="@16")", "id-length"},
    {R"(IDLength="32")", R"(IDLength="@0")", "id-length"},
    {R"(IDLength="32")", R"(IDLength="@33")", "id-length"},
    {R"(IDLength="32" FuseNumber="100")", R"(IDLength="@8" FuseNumber="100")", "id-length"},
    {R"( IDLength="32")", "", ""},
    {R"(jtagDeviceID="0x01235057" DeviceIDScanMask="0x0FFFFFFF")", R"(jtagDeviceID="0x91235057" DeviceIDScanMask="0x0FFFFFFF")", ""},
    {R"(jtagDeviceID="0x01235057" DeviceIDScanMask="0x0FFFFFFF")", R"(jtagDeviceID="0x01235057" DeviceIDScanMask="@0x00FFFFFF")", "id-outside-mask"},
    {R"(jtagDeviceID="0x01235057" DeviceIDScanMask="0x0FFFFFFF")", R"(jtagDeviceID="0x01235057" DeviceIDScanMask="@0x0FFFFFF0")", "id-outside-mask"},
    {R"(jtagDeviceID="0x01235057" DeviceIDScanMask="0x0FFFFFFF")", R"(jtagDeviceID="0x01235057" DeviceIDScanMask="@0x0F0FFFFF")", "id-outside-mask"},
    {R"(ispDeviceID="0x2A")", R"(ispDeviceID="@0x12A")", "id-outside-mask"},
    {R"(jtagDeviceID="0x01235057" DeviceIDScanMask="0x0FFFFFFF")", R"(jtagDeviceID="0x01235057" DeviceIDScanMask="@0")", "mask-zero"},
    {R"(<Device Name="PLD2064" CodeName="PLD2064" Vendor="Other Devices" Comm="ISP" FuseNumber="4982712"
            ispDeviceID="0x2A" DeviceIDScanMask="0xFF"/>)",
     R"(@<Device Name="PLD2064" CodeName="PLD2064" Vendor="Other Devices" Comm="ISP" FuseNumber="4982712"
            ispDeviceID="0x2A"/>)", "mask-zero"},
    {R"(jtagDeviceID="0x01236057")", R"(jtagDeviceID="@0")", "id-zero"},
    {R"(jtagDeviceID="0x01236057")", R"(jtagDeviceID="@0x00000000")", "id-zero"},
    {R"(ispDeviceID="0x2A")", R"(ispDeviceID="@0x00")", "id-zero"},
    {R"(ispDeviceID="0x2B")", R"(ispDeviceID="@0")", "id-zero"},
    {R"(jtagDeviceID="0x02128059")", R"(jtagDeviceID="@0")", "id-zero"},
    {R"(Comm="JTAG"
            jtagDeviceID="0x01236057" )", R"(Comm="@JTAG"
            )", "id-missing"},
    {R"(Comm="ISP" FuseNumber="4982712"
            ispDeviceID="0x2A" )", R"(Comm="@ISP" FuseNumber="4982712"
            )", "id-missing"},
    {R"(Comm="JTAG"
            jtagDeviceID="0x01236057")", R"(Comm="@ISP"
            jtagDeviceID="0x01236057")", "id-missing"},
    {R"(Comm="ISP" FuseNumber)", R"(Comm="@JTAG" FuseNumber)", "id-missing"},
    {R"(Comm="ISP" FuseNumber)", R"(Comm="@DUAL" FuseNumber)", "id-missing"},
    {R"(Comm="DUAL" FuseNumber="5828"
            jtagDeviceID="0x02128059" ispDeviceID="0x2B" )", R"(Comm="@@DUAL" FuseNumber="5828"
            )", "id-missing id-missing"},
    {R"(jtagDeviceID="0x01235057")", R"(jtagDeviceID="@0x01234057")", "id-shadowed"},
    {R"(jtagDeviceID="0x01236057" DeviceIDScanMask="0x0FFFFFFF")", R"(jtagDeviceID="@0x01234057" DeviceIDScanMask="@0x0FFF0FFF")", "id-shared id-outside-mask"},

    // Names and texts
    {R"(Name="PLD1234B")", R"(Name="@")", "name-empty"},
    {R"(CodeName="PLD1234B")", R"(CodeName="@")", "name-empty"},
    {R"(CodeName="PLD2064")", R"(CodeName="@")", "name-empty"},
    {R"(<Device Name="PLD1234B")", R"(@<Device)", "name-missing"},
    {R"(<Device Name="PLD1234C" CodeName="PLD1234C")", R"(@<Device Name="PLD1234C")", "name-missing"},
    {R"(Name="PLD1234B")", R"(Name="@PLD1234A")", "name-shadowed"},
    {R"(CodeName="PLD1234B" Vendor="Example Devices" Comm="JTAG" ARCHLength="352" ARCHRow="740" ELength="64" ERow="2"
            jtagDeviceID="0x01235057" DeviceIDScanMask="0x0FFFFFFF" IDLength="32" FuseNumber="260480")",
     R"(CodeName="@pld1234a" Vendor="Example Devices" Comm="JTAG" ARCHLength="352" ARCHRow="740" ELength="64" ERow="2"
            jtagDeviceID="0x01235057" DeviceIDScanMask="0x0FFFFFFF" IDLength="32" FuseNumber="@260480")", "code-name-shadowed fuse-count-shared"},
    {R"(AliasName="OLD1234A")", R"(AliasName="@PLD1234B")", "alias-shadowed"},
    {R"(<Family Name="PLD2000">)", R"(<Family Name="@PLD1200">)", "family-shadowed"},
    {R"(<Family Name="PLD2000">)", R"(<Family Name="@">)", "family-name-missing"},
    {R"(<Family Name="PLD2000">)", R"(@<Family>)", "family-name-missing"},
    {R"(<Family Name="PLD2000">)", R"(@<Family AliasName="PLD20">)", "family-name-missing"},
    {R"(Family="PLD1200")", R"(Family="@PLD2000")", "family-text-unlike"},
    {R"(Family="PLD1200")", R"(Family="@pld1200")", "family-text-unlike"},
    {R"(Family="PLD1200")", R"(Family="@PLD12000")", "family-text-unlike"},
    {R"(Family="PLD1200")", R"(Family="@")", "family-text-unlike"},
    {R"(Family="PLD1200")", R"(Family="PLD1200 series")", ""},
    {R"(Family="PLD1200")", R"(Family="@ PLD1200")", "text-blanks"},
    {R"(Name="PLD1234B")", R"(Name="@PLD1234B ")", "text-blanks"},
    {R"(Name="PLD1234B")", R"(Name="@&#9;PLD1234B")", "text-blanks"},
    {R"(Name="PLD1234B")", "Name=\"@PLD1234B\xC2\xA0\"", "text-blanks"},
    {R"(Name="PLD1234B")", "Name=\"@\xE2\x80\x8BPLD1234B\"", "text-blanks"},
    {R"(Name="PLD1234B")", R"(Name="PLD 1234 B")", ""},
    {R"(Name="PLD1234B")", "Name=\"@PLD1234\xE2\x80\x93" "B\"", "text-signs"},
    {R"(Name="PLD1234B")", "Name=\"@PLD1234\xE2\x88\x92" "B\"", "text-signs"},
    {R"(Name="PLD1234B")", "Name=\"@PLD1234\xC2\xAD" "B\"", "text-signs"},
    {R"(Name="PLD1234B")", "Name=\"@PLD1234\xC2\xA0" "B\"", "text-signs"},
    {R"(Name="PLD1234B")", "Name=\"@PLD&#9;1234B\"", "text-signs"},
    {R"(Name="PLD1234B")", "Name=\"@PLD&#10;1234B\"", "text-signs"},
    {R"(Name="PLD1234B")", "Name=\"PLD\xE8\xA3\x85\"", ""},
    {R"(<Package Type="TQ100" PON="PLD1234B-5TQ100C")", R"(<Package Type="@tq100" PON="PLD1234B-5TQ100C")", "package-type-case"},
    {R"(Type="BG256")", R"(Type="bg256")", ""},
    {R"(CodeName="PLD1234B")", R"(CodeName="@ PLD1234B")", "text-blanks"},
    {R"(AliasName="OLD1234A")", R"(AliasName="@OLD1234A ")", "text-blanks"},
    {R"(Vendor="Other Devices")", R"(Vendor="@Other Devices ")", "text-blanks"},
    {R"(<Family Name="PLD2000">)", R"(<Family Name="@PLD2000 ">)", "text-blanks"},
    {R"(AliasName="PLD12")", R"(AliasName="@PLD12 ")", "text-blanks"},
    {R"(Type="BG256")", R"(Type="@BG256 ")", "text-blanks"},
    {R"(PON="PLD1234A-5BG256C")", R"(PON="@PLD1234A-5BG256C ")", "text-blanks"},
    {R"(AliasPON="PLD1234C-5TQ100H")", R"(AliasPON="@ PLD1234C-5TQ100H")", "text-blanks"},
    {R"(JDF="a_bg256.jdf")", R"(JDF="@a_bg256.jdf ")", "text-blanks"},
    {R"(Comm="JTAG")", R"(Comm="@JTAG ")", "access-mode"},
    {R"(Comm="JTAG")", R"(Comm="@jtag")", "access-mode"},
    {R"(Comm="JTAG")", R"(Comm="@")", "access-mode"},
    {R"(<Device Name="PLD2064" CodeName="PLD2064" Vendor="Other Devices" Comm="ISP")",
     R"(@<Device Name="PLD2064" CodeName="PLD2064" Vendor="Other Devices")", "access-mode-missing"},

    // Packages
    {R"(Type="BG256" PON="PLD1234A-5BG256C" JDF="a_bg256.jdf")", R"(Type="@" PON="PLD1234A-5BG256C" JDF="a_bg256.jdf")", "package-type-missing"},
    {R"(<Package Type="BG256" )", R"(@<Package )", "package-type-missing"},
    {R"(<Package Type="BG256" PON="PLD1234A-5BG256C" JDF="a_bg256.jdf"/>)",
     R"(@<Package Type="TQ100" PON="PLD1234A-5TQ100C" JDF="a_tq100.jdf"/>)", "package-twice"},
    {R"(<Package Type="BG256" PON="PLD1234A-5BG256C" JDF="a_bg256.jdf"/>)", R"(@<Package Type="TQ100" PON="pld1234a-5tq100c"/>)", "package-twice"},
    {R"(<Package Type="BG256" PON="PLD1234A-5BG256C" JDF="a_bg256.jdf"/>)", R"(<Package Type="BG256"/>@<Package Type="BG256"/>)", "package-twice"},
    {R"(Type="BG256" PON="PLD1234A-5BG256C")", R"(Type="TQ100" PON="PLD1234A-7TQ100C")", ""},
    {R"(PON="PLD1234A-5BG256C")", R"(PON="@")", "ordering-number-empty"},
    {R"(AliasPON="PLD1234C-5TQ100H")", R"(AliasPON="@")", "ordering-number-empty"},
    {R"(PON="PLD1234A-5BG256C")", R"(PON="PLD1234A-5BG256C" BackupPON="@PLD1234A-6BG256C")", "ordering-number-backup"},
    {R"(PON="PLD1234A-5BG256C")", R"(PON="PLD1234A-5BG256C" BackupPON="@")", "ordering-number-backup"},
    {R"(PON="PLD1234A-5BG256C")", R"(PON="PLD1234A-5BG256C" BackupPON="PLD1234A-5BG256C")", ""},
    {R"(PON="PLD1234A-5BG256C")", R"(BackupPON="@PLD1234A-5BG256C")", "ordering-number-backup"},
    {R"(PON="PLD1234B-5TQ100C")", R"(PON="@@PLD1234A-5TQ100C")", "ordering-number-shared full-name-shared"},
    {R"(PON="PLD1234A-5BG256C")", R"(PON="@PLD1234C-5BG256C")", "ordering-number-unlike"},
    {R"(PON="PLD1234A-5BG256C")", R"(PON="@pld2064-5BG256C")", "ordering-number-unlike"},
    {R"(AliasPON="PLD1234C-5TQ100H")", R"(AliasPON="@PLD1234B-5TQ100H")", "ordering-number-unlike"},
    {R"(PON="PLD1234A-5BG256C")", R"(PON="OLD1234A-5BG256C")", ""},
    {R"(PON="PLD1234A-5BG256C")", R"(PON="XYZ")", ""},
    {R"(JDF="b_tq100.jdf")", R"(JDF="@a_tq100.jdf")", "jdf-shared"},
    {R"(JDF="b_tq100.jdf")", R"(JDF="@a_tq10X.jdf")", "jdf-shared"},
    {R"(JDF="b_tq100.jdf")", R"(JDF="@a_tq10yyyyy")", "jdf-shared"},
    {R"(JDF="b_tq100.jdf")", R"(JDF="A_tq100.jdf")", ""},
    {R"(JDF="b_tq100.jdf")", R"(JDF="a_tq1000.jdf")", ""},
    {R"(JDF="a_bg256.jdf")", R"(JDF="a_tq10x.jdf")", ""},
    {R"(PON="PLD1234B-5TQ100C")", R"(PON="@@PLD1234A_5TQ100C")", "ordering-number-unlike entity-name-shared"},

    // Fuse counts
    {R"(CodeName="PLD1234B")", R"(CodeName="@PLD1234A-7")", "full-name-shared"},
    {R"(CodeName="PLD1234B")", R"(CodeName="@PLD1 234A-10Q")", "full-name-shared"},
    {R"(FuseNumber="5828")", R"(FuseNumber="@4988064")", "fuse-count-alias"},
    {R"(FuseNumber="5828")", R"(FuseNumber="4982712")", ""},
    {R"(FuseNumber="4982712"
            ispDeviceID="0x2A" DeviceIDScanMask="0xFF"/>
    <Device Name="PLD2128" CodeName="PLD2128" Vendor="Other Devices" Comm="DUAL" FuseNumber="5828")",
     R"(FuseNumber="5892"
            ispDeviceID="0x2A" DeviceIDScanMask="0xFF"/>
    <Device Name="PLD2128" CodeName="PLD2128" Vendor="Other Devices" Comm="DUAL" FuseNumber="@5828")", "fuse-count-alias"},

    // Instructions
    {R"(<Device Name="PLD1234C" CodeName="PLD1234C" Vendor="Example Devices" Comm="JTAG"
            jtagDeviceID="0x01236057" DeviceIDScanMask="0x0FFFFFFF" IDLength="32" FuseNumber="100"
            IRLength="8" )",
     R"(@<Device Name="PLD1234C" CodeName="PLD1234C" Vendor="Example Devices" Comm="JTAG"
            jtagDeviceID="0x01236057" DeviceIDScanMask="0x0FFFFFFF" IDLength="32" FuseNumber="100"
            )", "ir-length"},
    {R"(IRLength="8" )", R"(IRLength="@0" )", "ir-length"},
    {R"(USERCODEIntruction="0xC0")", R"(USERCODEIntruction="@0xE0")", "instruction-shared"},
    {R"(USERCODEIntruction="0xC0")", R"(USERCODEIntruction="@0xFF")", "instruction-shared"},
    {R"(IDInstruction="0xE0" InstructionBypass="0xFF">)", R"(IDInstruction="@@0xFF" InstructionBypass="0xFF">)", "instruction-shared instruction-unlike"},
    {R"(IDInstruction="0xE0" InstructionBypass="0xFF">)", R"(IDInstruction="@0xE1" InstructionBypass="0xFF">)", "instruction-unlike"},
    {R"(IDCodeInst="0xE0")", R"(IDCodeInst="@0xE1")", "instruction-unlike"},
    {R"(BypassInst="0xFF")", R"(BypassInst="@0x7F")", "instruction-unlike"},
    {R"(BypassInst="0xFF")", R"(BypassInst="@0x1FF")", "instruction-unlike"},
    {R"(BypassInst="0xFF")", R"(BypassInst="11111111")", ""},
    {R"(InstructionBypass="0xFF")", R"(InstructionBypass="@@0x1F")", "bypass-ones instruction-unlike"},
    {R"(USERCODEIntruction="0xC0")", R"(USERCODEIntruction="@0x1C0")", "instruction-wide"},
    {R"(BypassLength="1")", R"(BypassLength="@2")", "bypass-length"},
    {R"(BypassLength="1")", R"(BypassLength="@0")", "bypass-length"},
    {R"( BypassLength="1")", "", ""},

    // Backups
    {R"(jtagDeviceID="0x01235057")", R"(jtagDeviceID="0x01235057" jtagDeviceIDBackup="@0x01235059")", "backup-unlike"},
    {R"(jtagDeviceID="0x01235057")", R"(jtagDeviceID="0x01235057" jtagDeviceIDBackup="19091543")", ""},
    {R"(DeviceIDMask="0x0FFFFFFF")", R"(DeviceIDMask="0x0FFFFFFF" DeviceIDMaskBackup="@0xFFFFFFFF")", "backup-unlike"},
    {R"(jtagDeviceID="0x01235057")", R"(jtagDeviceID="0x01235057" DeviceIDMaskBackup="@0x0FFFFFFF")", "backup-unlike"},
    {R"(ARCHLength="352")", R"(ARCHLength="352" BackupARCHLength="@353")", "backup-unlike"},
    {R"(ARCHRow="740")", R"(ARCHRow="740" BackupARCHRow="@0")", "backup-unlike"},
    {R"(ELength="64")", R"(ELength="64" BackupELength="@63")", "backup-unlike"},
    {R"(ERow="2")", R"(ERow="2" BackupERow="@1")", "backup-unlike"},
    {R"(AddressLength="740")", R"(AddressLength="740" BackupAddressLength="@741")", "backup-unlike"},
    {R"(DataLength="352")", R"(DataLength="352" BackupDataLength="@351")", "backup-unlike"},
    {R"(FuseNumber="260480")", R"(FuseNumber="260480" BackupFuseNumber="@260481")", "backup-unlike"},
    {R"(Comm="ISP")", R"(Comm="ISP" AlgOptions="FAST")", ""},

    // Lists
    {R"(ListControlReg1Address="ADDR;100;101;")", R"(ListControlReg1Address="@ADDR;100;")", "list-short"},
    {R"(ListControlStatusControl="CTRL;R;R;RW;")", R"(ListControlStatusControl="@CTRL;R;R;")", "list-short"},
    {R"(ListControlStatusIndex="INDEX;8;12;13;")", R"(ListControlStatusIndex="@")", "list-short"},
    {R"(ListPersistent_fuseColumn="COL;0;0;0;")", R"(ListPersistent_fuseColumn="@COL;0;0;")", "list-short"},
    {R"(ListControlStatusControl="CTRL;R;R;RW;" )", "", ""},
    {R"(ListControlReg1BitName="NAME;SECURE;BACKGROUND;")", R"(ListControlReg1BitName="@NAME;SECURE;BACKGROUND")", "list-unclosed"},
    {R"(ListControlStatusBitName="NAME;DONE;BUSY;FAIL;")", R"(ListControlStatusBitName="@NAME;DONE;BUSY;FAIL")", "list-unclosed"},
    {R"(ListControlReg1Address="ADDR;100;101;")", R"(ListControlReg1Address="@ADDR;100;101")", "list-unclosed"},
    {R"(ListControlReg1Address="ADDR;100;101;")", R"(ListControlReg1Address="@ADDR;100;;101;")", "list-after-empty"},
    {R"(ListControlReg1Address="ADDR;100;101;")", R"(ListControlReg1Address="@ADDR;100;101;102;")", "list-surplus"},
    {R"(ListControlReg1Address="ADDR;100;101;")", R"(ListControlReg1Address="@ADDR;100;0x65;")", "list-number"},
    {R"(ListControlReg1Address="ADDR;100;101;")", R"(ListControlReg1Address="@@100;101;")", "list-label list-short"},

    // Bits
    {R"(ListControlReg1BitName="NAME;SECURE;BACKGROUND;")", R"(ListControlReg1BitName="@NAME;SECURE;SECURE;")", "bit-shared"},
    {R"(ListControlReg1Address="ADDR;100;101;")", R"(ListControlReg1Address="@ADDR;100;100;")", "bit-shared"},
    {R"(ListPersistent_fuseAddress="ADDR;200;201;202;")", R"(ListPersistent_fuseAddress="@ADDR;200;201;200;")", "bit-shared"},
    {R"(ListControlStatusBitName="NAME;DONE;BUSY;FAIL;")", R"(ListControlStatusBitName="@NAME;DONE;BUSY;DONE;")", "bit-shared"},
    {R"(ListControlStatusIndex="INDEX;8;12;13;")", R"(ListControlStatusIndex="@INDEX;8;12;8;")", "bit-shared"},
    {R"(BitName="BACKGROUND" Value="0")", R"(BitName="@SECURE" Value="0")", "bit-shared"},
    {R"(Value="0" Address="100" Column="8")", R"(Value="0" Address="@100" Column="7")", "bit-shared"},
    {R"(Value="0" Address="100" Column="8")", R"(Value="0" Address="@0x64" Column="7")", "bit-shared"},
    {R"(BitName="BUSY" Control="R" Index="12")", R"(BitName="BUSY" Control="R" Index="@8")", "bit-shared"},
    {R"(BitName="BUSY" Control="R" Index="12")", R"(BitName="@DONE" Control="R" Index="12")", "bit-shared"},
    {R"(BitName="BUSY" Control="R" Index="12")", R"(BitName="BUSY" Control="R")", ""},
    {R"(<Persistent_fuse Value="1" Address="201"/>)", R"(<Persistent_fuse Value="1" Address="@200"/>)", "bit-shared"},
    {R"(<Entry BitName="2" Address="5" Column="8"/>)", R"(<Entry BitName="@1" Address="5" Column="8"/>)", "bit-shared"},
    {R"(<Entry BitName="2" Address="5" Column="8"/>)", R"(<Entry BitName="2" Address="@5" Column="0"/>)", "bit-shared"},

    // What comments allow
    {R"(<Package Type="BG256" PON="PLD1234A-5BG256C")", R"(<!-- plddb: allow ordering-number-unlike --><Package Type="BG256" PON="PLD1234C-5BG256C")", ""},
    {R"(<Package Type="BG256" PON="PLD1234A-5BG256C")", R"(<!-- plddb: allow ordering-number-unlike: sold so -->
       <!-- another --><Package Type="BG256" PON="PLD1234C-5BG256C")", ""},
    {R"(<Package Type="BG256" PON="PLD1234A-5BG256C")", R"(<!--plddb:allow ordering-number-unlike,text-blanks (both)--><Package Type="BG256 " PON="PLD1234C-5BG256C")", ""},
    {R"(<Package Type="BG256" PON="PLD1234A-5BG256C")", R"(<!-- plddb: allow text-blanks --><!-- plddb: allow ordering-number-unlike --><Package Type="BG256 " PON="PLD1234C-5BG256C")", ""},
    {R"(<Package Type="BG256" PON="PLD1234A-5BG256C")", R"(@<!-- plddb: allow id-shared --><Package Type="BG256" PON="@PLD1234C-5BG256C")", "allow-unused ordering-number-unlike"},
    {R"(<Package Type="BG256")", R"(@<!-- plddb: allow nonsense --><Package Type="BG256")", "allow-unused"},
    {R"(<Package Type="BG256")", R"(@<!-- plddb: allow --><Package Type="BG256")", "allow-unused"},
    {R"(<Package Type="BG256")", R"(@<!-- plddb: allow TEXT-BLANKS --><Package Type="@BG256 ")", "allow-unused text-blanks"},
    {R"(<Package Type="BG256")", R"(<!-- about plddb: allow nothing --><Package Type="BG256")", ""},
    {R"(</DeviceDatabase>)", R"(@<!-- plddb: allow name-shadowed --></DeviceDatabase>)", "allow-unused"},
    {R"(</DeviceDatabase>)", R"(</DeviceDatabase>@<!-- plddb: allow name-shadowed -->)", "allow-unused"},
    {R"(<Device Name="PLD2128" )", R"(<!-- plddb: allow name-hidden --><Device Name="PLD2064" )", ""},

    // EBR blocks
    {R"(BitName="8" Column="0 to 31" Address="5 to 6")", R"(BitName="8" Column="0 to 31" Address="@5 to 7")", "ebr-rows"},
    {R"(BitName="8" Column="0 to 31" Address="5 to 6")", R"(BitName="8" Column="0 to 31" Address="@5 to 5")", "ebr-rows"},
    {R"(BitName="8" Column="0 to 31" Address="5 to 6")", R"(BitName="8" Column="0 to 63" Address="@5 to 6")", "ebr-rows"},
    {R"(BitName="8" Column="0 to 31" Address="5 to 6")", R"(BitName="12" Column="0 to 31" Address="@5 to 6")", "ebr-rows"},
    {R"(BitName="8" Column="0 to 31" Address="5 to 6")", R"(BitName="@7" Column="0 to 31" Address="5 to 6")", "ebr-rows"},
    {R"(BitName="8" Column="0 to 31" Address="5 to 6")", R"(BitName="@2" Column="0 to 31" Address="5 to 6")", "ebr-rows"},
    {R"(BitName="8" Column="0 to 31" Address="5 to 6")", R"(BitName="8" Column="@0 to 30" Address="5 to 6")", "ebr-width"},
    {R"(BitName="8" Column="0 to 31" Address="5 to 6")", R"(BitName="8" Column="@1 to 31" Address="5 to 6")", "ebr-width"},
    {R"(BitName="8" Column="0 to 31" Address="5 to 6")", R"(BitName="8" Column="@0 to 5" Address="5 to 6")", "ebr-width"},
    {R"(BitName="8" Column="0 to 31" Address="5 to 6")", R"(BitName="8" Column="@31 to 0" Address="5 to 6")", "ebr-reversed"},
    {R"(BitName="8" Column="0 to 31" Address="5 to 6")", R"(BitName="8" Column="@1 to 0" Address="5 to 6")", "ebr-reversed"},
    {R"(BitName="8" Column="0 to 31" Address="5 to 6")", R"(BitName="8" Column="@0 to 31")", "ebr-incomplete"},
    {R"(BitName="8" Column="0 to 31" Address="5 to 6")", R"(BitName="8" Address="@5 to 6")", "ebr-incomplete"},
    {R"(BitName="8" Column="0 to 31" Address="5 to 6")", R"(BitName="0x8" Column="32 to 63" Address="6 to 5")", ""},
    {R"(BitName="8" Column="0 to 31" Address="5 to 6")", R"(BitName="8" Column="@-2147483648 to 2147483646" Address="5 to 6")", "ebr-width"},
};
// clang-format on

struct Seeded {
  std::string text;
  Texts places;  // "LINE:COLUMN"
};

Seeded Seed(const std::string& clean, const Row& row) {
  Seeded seeded;
  const auto at = clean.find(row.from);
  if (at == clean.npos) return seeded;
  const std::string marked = clean.substr(0, at) + row.to + clean.substr(at + std::string(row.from).size());
  for (const char c : marked) {
    if (c != '@') {
      seeded.text += c;
      continue;
    }
    const auto lines = std::count(seeded.text.begin(), seeded.text.end(), '\n');
    const auto column = seeded.text.size() - (seeded.text.rfind('\n') + 1);
    seeded.places.push_back(std::to_string(lines + 1) + ":" + std::to_string(column + 1));
  }
  return seeded;
}

TEST(CheckSeeded, FindsNothingInTheCleanDescription) {
  EXPECT_EQ(Brief(CheckText(support::ReadFile(PLDDB_TEST_DIR "/check/seeded.xml"))), Texts());
}

TEST(CheckSeeded, FindsEachFaultAtItsPlaceAndNothingElse) {
  const std::string clean = support::ReadFile(PLDDB_TEST_DIR "/check/seeded.xml");
  for (const Row& row : kRows) {
    const Seeded seeded = Seed(clean, row);
    const Texts codes = support::Split(row.codes, " ");
    Texts expected;
    for (std::size_t i = 0; i < codes.size(); ++i) {
      expected.push_back((i < seeded.places.size() ? seeded.places[i] : "?") + " " + codes[i]);
    }
    Texts found;
    for (const auto& finding : CheckText(seeded.text)) {
      found.push_back(std::to_string(finding.place.line) + ":" + std::to_string(finding.place.column) + " " +
                      std::string(finding.code));
    }
    EXPECT_EQ(found, expected) << "row: " << row.from << " -> " << row.to;
  }
}

TEST(CheckCodes, HaveARowOrAFileEach) {
  std::set<std::string> shown = {"unreadable"};  // no text can be that
  for (const Row& row : kRows) {
    for (const std::string& code : support::Split(row.codes, " ")) shown.insert(code);
  }
  for (const std::string& file : CorpusFiles()) {
    for (const std::string& finding : Expected(file)) {
      const auto start = finding.find('[') + 1;
      shown.insert(finding.substr(start, finding.size() - start - 1));
    }
  }
  for (const auto& code : plddb::check::Codes()) EXPECT_EQ(shown.erase(std::string(code.name)), 1U) << "row: " << code.name;
  EXPECT_EQ(shown, std::set<std::string>());
}

}  // namespace
