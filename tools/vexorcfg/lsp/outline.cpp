// Symbols and folding come from the same outline of a document.
#include <algorithm>
#include <span>
#include <string>
#include <vector>

#include "features.h"
#include "vexor/config/assist.h"

namespace tools::vexorcfg::lsp {
namespace {

using vexor::OutlineItem;

constexpr int kNamespace = 3;  // kinds of symbols of the protocol
constexpr int kField = 8;
constexpr int kMostDepth = 32;  // deeper elements become children of this depth

Json MakeSymbol(const OutlineItem& item) {
  Json symbol = {{"name", item.name.empty() ? "?" : item.name},  // clients refuse an empty one
                 {"kind", item.holds_elements ? kNamespace : kField}};
  if (!item.text.empty()) symbol["detail"] = item.text;
  return symbol;
}

// Takes the elements of this depth, with their children, off the front of the list.
Json TakeSymbols(std::span<const OutlineItem>& items, int depth, const TextDocument& text) {
  Json symbols = Json::array();
  while (!items.empty() && std::min(items.front().depth, kMostDepth) >= depth) {
    const OutlineItem& item = items.front();
    items = items.subspan(1);
    Json symbol = MakeSymbol(item);
    symbol["range"] = MakeRange(text, item.range);
    symbol["selectionRange"] = MakeRange(text, item.name_range);
    Json children = TakeSymbols(items, depth + 1, text);
    if (!children.empty()) symbol["children"] = std::move(children);
    symbols.push_back(std::move(symbol));
  }
  return symbols;
}

Json MakeSymbolList(std::span<const OutlineItem> items, const OpenDocument& document) {
  Json symbols = Json::array();
  for (const OutlineItem& item : items) {
    Json symbol = MakeSymbol(item);
    symbol.erase("detail");
    symbol["location"] = {{"uri", document.uri}, {"range", MakeRange(document.text, item.range)}};
    symbols.push_back(std::move(symbol));
  }
  return symbols;
}

}  // namespace

Json MakeSymbols(OpenDocument& document, const Client& client, const Json& /*params*/) {
  std::vector<OutlineItem> items = vexor::OutlineText(document.text.text());
  std::erase_if(items, [](const OutlineItem& item) { return item.is_comment; });
  std::span<const OutlineItem> rest = items;
  return client.takes_symbol_trees ? TakeSymbols(rest, 0, document.text)
                                   : MakeSymbolList(items, document);
}

Json MakeFoldingRanges(OpenDocument& document, const Client& /*client*/, const Json& /*params*/) {
  Json ranges = Json::array();
  for (const OutlineItem& item : vexor::OutlineText(document.text.text())) {
    const std::size_t first = document.text.PositionOf(item.range.begin).line;
    std::size_t last = document.text.PositionOf(item.range.end).line;
    if (!item.is_comment && last > first) --last;  // the end tag stays visible
    if (last <= first) continue;
    Json range = {{"startLine", first}, {"endLine", last}};
    if (item.is_comment) range["kind"] = "comment";
    ranges.push_back(std::move(range));
  }
  return ranges;
}

}  // namespace tools::vexorcfg::lsp
