#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

/// \file
/// Programming files made in code: all that their readers look at, and no design.

namespace samples {

inline std::string BigEndian(std::uint32_t value, int bytes) {
  std::string text;
  for (int i = bytes - 1; i >= 0; --i) text += static_cast<char>(value >> (8 * i) & 0xFF);
  return text;
}

inline std::string LittleEndian(std::uint32_t value, int bytes) {
  const std::string big = BigEndian(value, bytes);
  return {big.rbegin(), big.rend()};
}

inline std::string Words(const std::vector<std::uint32_t>& words, int bytes = 4) {
  std::string text;
  for (const std::uint32_t word : words) text += BigEndian(word, bytes);
  return text;
}

// --- JEDEC ------------------------------------------------------------------------------------------------------------------

/// STX, `fields` (and before them a design specification, if they start with one), ETX, sum.
inline std::string Jedec(const std::string& fields, const std::string& before = "") {
  return before + "\x02" + fields + "\x03" + "0000";
}

/// As the CPLD fitter of XC9500XL writes it.
inline std::string XilinxJedec(const std::string& device, const std::string& fuses) {
  return Jedec("QF" + fuses + "*\nQV0*\nF0*\nX0*\nJ0 0*\nN VERSION P.20131013*\nN DEVICE " + device +
                   "*\nNote Block 0 *\nNote Block 0 PLA AND array *\nL0000000 00000000 00000000*\nC0000*\n",
               "Programmer Jedec Bit Map\nDate Extracted: Sun Jan  1 00:00:00 2023\n\n");
}

// --- Configuration streams --------------------------------------------------------------------------------------------------

constexpr std::uint32_t kDummy = 0xFFFFFFFF;
constexpr std::uint32_t kSync = 0xAA995566;

/// Virtex-4 and later: the id in register 12.
inline std::string WideStream(std::uint32_t id) {
  return Words({kDummy,     kDummy, 0x000000BB, 0x11220044, kDummy,     kDummy,     kSync,      0x20000000, 0x30022001, 0,
                0x30008001, 0,      0x20000000, 0x30008001, 7,          0x20000000, 0x30012001, 0x02003FE5, 0x30018001, id,
                0x30008001, 9,      0x20000000, 0x30004000, 0x50000004, 1,          2,          3,          4});
}

/// Virtex-II and Spartan-3: the id in register 14, and a KEY in register 12.
inline std::string Spartan3Stream(std::uint32_t id) {
  return Words({kDummy, kSync, 0x30008001, 7, 0x30016001, 0x1A, 0x30018001, 0x12345678, 0x30012001, 0x400D3FE5, 0x3001C001, id,
                0x3000C001, 0, 0x30004000, 0x50000002, 1, 2});
}

/// Virtex-5 and later have COR1 in register 14.
inline std::string Virtex5Stream(std::uint32_t id) {
  return Words(
      {kDummy, kSync, 0x20000000, 0x30012001, 0x3FE5, 0x3001C001, 0x00000000, 0x30018001, id, 0x30004000, 0x50000001, 1});
}

/// Spartan-3A: words of 16 bits and a short synchronisation word.
inline std::string Spartan3AStream(std::uint32_t id) {
  return Words({0xFFFF, 0xFFFF, 0xFFFF, 0xAA99, 0x30A1, 0x0007, 0x2000, 0x31A1, 0x0880, 0x31C2, id >> 16, id & 0xFFFF, 0x30A1,
                0x0000, 0x5060, 0, 4, 1, 2},
               2);
}

/// Spartan-6: words of 16 bits and the long one.
inline std::string Spartan6Stream(std::uint32_t id) {
  return Words({0xFFFF, 0xFFFF, 0xFFFF,   0xFFFF,      0xAA99, 0x5566, 0x30A1, 0x0007, 0x3161, 0x2850, 0x31A1,
                0x0954, 0x31C2, id >> 16, id & 0xFFFF, 0x30A1, 0x0000, 0x5060, 0,      4,      1,      2},
               2);
}

/// Virtex and Spartan-II write no id.
inline std::string VirtexStream() {
  return Words(
      {kDummy, kSync, 0x30008001, 7, 0x30016001, 0xA, 0x30012001, 0x00803FE5, 0x3000C001, 0, 0x30004000, 0x50000002, 1, 2});
}

inline std::string WithReversedBits(std::string bytes) {
  for (char& c : bytes) {
    const auto byte = static_cast<unsigned char>(c);
    unsigned int reversed = 0;
    for (int i = 0; i < 8; ++i) reversed |= (byte >> i & 1U) << (7 - i);
    c = static_cast<char>(reversed);
  }
  return bytes;
}

/// With the bytes of each word of `size` bytes in reverse order.
inline std::string WithSwappedBytes(const std::string& bytes, std::size_t size) {
  std::string swapped = bytes;
  for (std::size_t i = 0; i + size <= bytes.size(); i += size) {
    for (std::size_t j = 0; j < size; ++j) swapped[i + j] = bytes[i + size - 1 - j];
  }
  return swapped;
}

inline std::string Field(char key, const std::string& text) {
  return key + BigEndian(static_cast<std::uint32_t>(text.size() + 1), 2) + text + '\0';
}

inline std::string Bit(const std::string& part, const std::string& stream,
                       const std::string& design = "top;UserID=0XFFFFFFFF;Version=2022.1") {
  const std::string start("\x00\x09\x0F\xF0\x0F\xF0\x0F\xF0\x0F\xF0\x00\x00\x01", 13);
  return start + Field('a', design) + (part.empty() ? std::string("b\0\0", 3) : Field('b', part)) + Field('c', "2023/01/02") +
         Field('d', "03:04:05") + 'e' + BigEndian(static_cast<std::uint32_t>(stream.size()), 4) + stream;
}

// --- Texts of hex digits ----------------------------------------------------------------------------------------------------

inline std::string Hex(std::uint32_t value, int digits) {
  std::string text;
  for (int i = digits - 1; i >= 0; --i) text += "0123456789ABCDEF"[value >> (4 * i) & 0xF];
  return text;
}

inline std::string Record(std::uint32_t address, std::uint32_t type, const std::string& data) {
  std::string record =
      BigEndian(static_cast<std::uint32_t>(data.size()), 1) + BigEndian(address, 2) + BigEndian(type, 1) + data;
  unsigned int sum = 0;
  for (const char c : record) sum += static_cast<unsigned char>(c);
  record += static_cast<char>(0x100 - (sum & 0xFF));
  std::string text = ":";
  for (const char c : record) text += Hex(static_cast<unsigned char>(c), 2);
  return text + "\r\n";
}

/// An Intel HEX file of `image`.
inline std::string IntelHex(const std::string& image) {
  std::string text = Record(0, 4, std::string(2, '\0'));
  for (std::size_t at = 0; at < image.size(); at += 16) text += Record(static_cast<std::uint32_t>(at), 0, image.substr(at, 16));
  return text + ":00000001FF\r\n";
}

/// Two digits a line, as Efinix bitstreams are.
inline std::string EfinixHex(const std::string& bytes) {
  std::string text;
  for (const char c : bytes) text += Hex(static_cast<unsigned char>(c), 2) + "\n";
  return text;
}

inline std::string Efinix(const std::string& device) {
  return EfinixHex("Version: 2022.2.322\nGenerated: Jan 01, 2023 00:00\n\nProject: top\nFamily: Trion\nDevice: " + device +
                   "\nWidth: 1\nMode: passive\nPADDED_BITS: 0\n\n\n\x16\x8A\x22\x36\x01\x02");
}

// --- Gowin ------------------------------------------------------------------------------------------------------------------

inline std::string Binary(std::uint32_t value, int bits = 32) {
  std::string text;
  for (int i = bits - 1; i >= 0; --i) text += static_cast<char>('0' + (value >> i & 1));
  return text;
}

inline std::string Gowin(const std::string& header, std::uint32_t id, const std::string& lineEnd = "\n",
                         std::uint32_t command = 0x06) {
  return header + std::string(160, '1') + lineEnd + std::string(16, '1') + lineEnd + Binary(0xA5C3, 16) + lineEnd +
         Binary(command << 24) + Binary(id) + lineEnd + Binary(0x10000000) + Binary(0) + lineEnd + Binary(0x51000000) +
         Binary(0xFFFFFFFF) + lineEnd;
}

inline std::string GowinHeader(const std::string& device, const std::string& version, const std::string& part) {
  return "//Copyright (C)2014-2023\n//File Title: Bitstream file for\n//Tool Version: V1.9.8.10\n//Part Number: " + part +
         "\n" + (device.empty() ? "" : "//Device: " + device + "\n") +
         (version.empty() ? "" : "//Device Version: " + version + "\n") + "//Created Time: now\n";
}

// --- Records ----------------------------------------------------------------------------------------------------------------

inline std::string PofRecord(std::uint32_t type, const std::string& data) {
  return LittleEndian(type, 2) + LittleEndian(static_cast<std::uint32_t>(data.size()), 4) + data;
}

inline std::string Pof(const std::string& device, const std::string& magic = "POF") {
  return magic + '\0' + LittleEndian(0x10000, 4) + LittleEndian(4, 4) +
         PofRecord(1, std::string("Quartus Prime Compiler\0", 23)) + PofRecord(2, device) + PofRecord(3, "Untitled") +
         PofRecord(17, std::string(100, '\x55')) + PofRecord(8, "\x12\x34");
}

// --- SVF, XSVF --------------------------------------------------------------------------------------------------------------

/// The check of an id as the CPLD programmer writes it.
inline std::string SvfCheck(const std::string& irBits, const std::string& instruction, const std::string& id,
                            const std::string& mask) {
  return "SIR " + irBits + " TDI (" + instruction + ") SMASK (ff) ;\nSDR 32 TDI (00000000) SMASK (ffffffff) TDO (" + id +
         ") MASK (" + mask + ") ;\n";
}

inline std::string Svf(const std::string& body) {
  return "// Created using Xilinx Cse Software [ISE - 14.7]\n// Date: Sun Jan  1 00:00:00 2023\n\nTRST OFF;\nENDIR "
         "IDLE;\nENDDR IDLE;\nSTATE RESET IDLE;\n"
         "FREQUENCY 1E6 HZ;\n" +
         body;
}

inline std::string XsvfIr(std::uint32_t bits, std::uint32_t value) {
  return "\x02" + BigEndian(bits, 1) + BigEndian(value, static_cast<int>(bits + 7) / 8);
}

/// A compared scan of `bits` bits, given as bytes.
inline std::string XsvfCheck(std::uint32_t bits, const std::string& tdo, const std::string& mask) {
  return "\x08" + BigEndian(bits, 4) + "\x01" + mask + "\x09" + std::string(tdo.size(), '\0') + tdo;
}

inline std::string Xsvf(const std::string& body) {
  return std::string("\x07\x00\x13\x00\x14\x00\x12\x00\x12\x01\x04\x00\x00\x00\x00", 15) + body +
         std::string("\x12\x01\x00", 3);
}

}  // namespace samples
