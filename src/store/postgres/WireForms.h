// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <libpq-fe.h>

#include <bit>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

namespace pim {

// PostgreSQL's binary forms of values (pg_type, typreceive and typsend): numbers have their high
// byte first.

inline constexpr Oid kBoolType = 16;
inline constexpr Oid kBytesType = 17;
inline constexpr Oid kInt8Type = 20;
inline constexpr Oid kInt2Type = 21;
inline constexpr Oid kInt4Type = 23;
inline constexpr Oid kTextType = 25;
inline constexpr Oid kFloat8Type = 701;

template <class Number>
void AppendWire(Number number, std::string& bytes) {
  char wire[sizeof number];
  for (std::size_t i = sizeof number; i-- > 0; number = static_cast<Number>(number >> 8))
    wire[i] = static_cast<char>(number & 0xFF);
  bytes.append(wire, sizeof wire);
}
template <>
inline void AppendWire(std::uint64_t number, std::string& bytes) {
  char wire[sizeof number];
  const std::uint64_t high =
      std::endian::native == std::endian::little ? __builtin_bswap64(number) : number;
  std::memcpy(wire, &high, sizeof wire);
  bytes.append(wire, sizeof wire);
}
inline void AppendWire(std::int64_t number, std::string& bytes) {
  AppendWire(static_cast<std::uint64_t>(number), bytes);
}
inline void AppendWire(double number, std::string& bytes) {
  AppendWire(std::bit_cast<std::uint64_t>(number), bytes);
}

// Of one to eight bytes, with their sign.
inline std::int64_t NumberFromWire(std::string_view bytes) {
  std::uint64_t number = !bytes.empty() && (bytes.front() & 0x80) != 0 ? ~std::uint64_t{0} : 0;
  for (const char byte : bytes) number = number << 8 | static_cast<unsigned char>(byte);
  return static_cast<std::int64_t>(number);
}
inline double RealFromWire(std::string_view bytes) {
  return std::bit_cast<double>(NumberFromWire(bytes));
}

}  // namespace pim
