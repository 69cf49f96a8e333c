#pragma once

#include "stream/VObjectParser.h"

namespace pim {

// Each gives false when memory is out; the buffer's content is lost then.
bool ReserveBytes(VObjectParser& parser, std::size_t count);
bool AppendRun(VObjectParser& parser, const char* bytes, std::size_t count);
bool AppendByte(VObjectParser& parser, char byte);

// A parameter whose name begins at `offset` of the buffer, and the value of the last one.
bool AddParam(VObjectParser& parser, std::size_t offset);
bool SetParamValue(VObjectParser& parser, std::size_t offset);

// Back to the rest state for the next property. A buffer that a long value made large is freed.
void Reset(VObjectParser& parser);

}  // namespace pim
