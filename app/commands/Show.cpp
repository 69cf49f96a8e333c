#include "app/commands/Show.h"

#include <unistd.h>

#include <utility>

#include "app/input/Inputs.h"
#include "app/input/PictureStaging.h"
#include "app/input/TextKind.h"
#include "app/labels/Labels.h"
#include "app/output/Messages.h"
#include "app/output/Output.h"
#include "pim/manager/VObjectMgr.h"
#include "pim/support/ParseFailure.h"
#include "platform/CodePages.h"
#include "platform/Visible.h"
#include "support/ByteOrderMark.h"
#include "support/TextCodec.h"

namespace pim::app {
namespace {

constexpr NarrowStringView kLittleEndianMark = "\xFF\xFE";
constexpr NarrowStringView kBigEndianMark = "\xFE\xFF";

WideString FromUtf16(NarrowStringView bytes, bool littleEndian) {
  WideString text;
  text.reserve(bytes.size() / 2);
  for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
    const auto first = static_cast<unsigned char>(bytes[i]);
    const auto second = static_cast<unsigned char>(bytes[i + 1]);
    text += static_cast<char16_t>(littleEndian ? second << 8 | first : first << 8 | second);
  }
  return text;
}

// By the byte order mark, else by the default code page (--code-page).
WideString Decode(NarrowStringView bytes) {
  if (bytes.starts_with(kUtf8Mark)) return WideFromUtf8(bytes.substr(kUtf8Mark.size()));
  if (bytes.starts_with(kLittleEndianMark)) return FromUtf16(bytes.substr(2), true);
  if (bytes.starts_with(kBigEndianMark)) return FromUtf16(bytes.substr(2), false);
  WideString text;
  WidenText(bytes, text);
  return text;
}

void Feed(VObjectMgr& manager, std::string_view labels) {
  for (auto& [key, text] : ReadLabels(labels)) manager.MakeMapString(key, text);
}

// The user's own words stand ahead: the first text of a key is the one that stays.
void FeedLabels(VObjectMgr& manager, const Options& options) {
  if (options.labels) {
    ByteBuffer own;
    ReadInput(*options.labels, ByteOrderMark::Skipped, own);
    std::string bad;
    ReadLabels(own.view(), &bad);
    if (!bad.empty()) {
      throw Failure(ShownName(*options.labels) +
                    ": not \"key = text\": " + VisibleUtf8(WideFromUtf8(bad)));
    }
    Feed(manager, own.view());
  }
  Feed(manager, (options.language ? *FindLabels(*options.language) : UsersLabels()).text);
}

// By what the readers see begin. A lone VEVENT or VMEMO has no layout of its own: it shows as one
// in a calendar does. Empty for a text in which nothing begins.
WideString Render(const VObjectMgr& manager, WideString text) {
  NarrowString narrow;
  NarrowText(text, narrow);
  const auto head = TextHeadOf(narrow);
  if (!head) return {};
  switch (head->object) {
    case TextObject::Contact:
      return manager.VCardToString(std::move(text));
    case TextObject::Todo:
      return manager.VTodoToString(std::move(text));
    case TextObject::Calendar:
    case TextObject::Event:
    case TextObject::Memo:
      break;
  }
  return manager.VCalendarToString(std::move(text));
}

}  // namespace

int ShowFile(const Options& options) {
  const std::string& path = options.paths.front();
  VObjectMgr manager;
  FeedLabels(manager, options);
  ByteBuffer bytes;
  ReadInput(path, ByteOrderMark::Kept, bytes);
  const PrivatePictures pictures(TemporaryFolder());
  Messages messages;
  WideString rendering;
  try {
    rendering = Render(manager, Decode(bytes.view()));
  } catch (ParseFailure) {
    for (const std::u16string& message : messages.Take())
      Complain(ShownName(path) + ": " + VisibleUtf8(message, LineFeeds::Kept));
    return kRejected;
  }
  for (const std::u16string& message : messages.Take())
    Complain(ShownName(path) + ": " + VisibleUtf8(message, LineFeeds::Kept));
  if (rendering.empty()) {
    const std::string hint = LooksLike(bytes.view(), TextForm::VCard);
    Complain(ShownName(path) + ": no vObject begins in it" + (hint.empty() ? "" : ": " + hint));
  }
  // A record must not steer a terminal; a file or a pipe gets the text as it is.
  Print(isatty(STDOUT_FILENO) == 1 ? VisibleUtf8(rendering, LineFeeds::Kept)
                                   : Utf8FromWide(rendering));
  return kDone;
}

}  // namespace pim::app
