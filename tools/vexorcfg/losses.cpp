#include "losses.h"

#include <algorithm>
#include <set>
#include <tuple>

#include "common/text_output.h"
#include "vexor/util/version.h"

namespace tools::vexorcfg {
namespace {

using vexor::Description;
using vexor::Origin;
using vexor::Setting;
using vexor::Unread;
using vexor::UnreadKind;

// Whether the setting comes from the file, in a current or older form.
bool IsStated(const Setting& setting) {
  return setting.origin != Origin::kDefault && setting.origin != Origin::kMissing;
}

void AddDefault(const Setting& setting, std::vector<std::string>& lines) {
  const std::size_t slash = setting.path.rfind('/');
  const std::string element = setting.path.substr(0, slash) + ": ";
  const std::string name = setting.path.substr(slash + 1);
  if (!lines.empty() && lines.back().starts_with(element)) {
    lines.back() += ", " + name;
  } else {
    lines.push_back(element + name);
  }
}

std::string NameUnread(const Unread& unread) {
  constexpr std::size_t kLongest = 60;
  const std::string path =
      (unread.path.empty() ? "outside of the root element" : OneLine(unread.path)) + ": ";
  switch (unread.kind) {
    case UnreadKind::kText:
      return path + Quote(unread.text) + " is not read";
    case UnreadKind::kElement:
      return path + "the element is not read";
    case UnreadKind::kAttribute:
      return path + "the attribute " + OneLine(unread.text) + " is not read";
    case UnreadKind::kComment:
      return "comment: " + OneLine("<!--" + unread.text + "-->", kLongest);
    case UnreadKind::kMarkup:
      return "markup: " + Quote(unread.text) + " is not read";
    case UnreadKind::kRest:
      break;
  }
  return OneLine(unread.text);
}

class Collector {
 public:
  explicit Collector(const std::string& file) : file_(file) {}

  void AddVersion(const Description& before) {
    if (before.is_compatible || before.version.empty()) return;
    Add(before.version_line, "Version: " + Quote(before.version) + " is not compatible with " +
                                 vexor::GetVersionText() + ", which is written in its place");
  }

  void AddSettings(const Comparison& comparison) {
    for (const Setting* const setting : comparison.misread) {
      if (setting->origin == Origin::kCorrected) continue;  // what the older file means
      misread_.insert(setting);
      Add(setting->line, OneLine(setting->path) + ": " + Quote(setting->text) + " is read as " +
                             Quote(setting->value));
    }
    for (const Difference& difference : comparison.differences) {
      const Setting* const after = difference.b.empty() ? nullptr : &difference.b.front();
      for (const Setting& before : difference.a) {
        if (IsStated(before)) {
          AddStated(before, after);
        } else {
          AddDefault(before, losses_.defaults);
        }
      }
    }
    // The value is the reader's default, which means the same; it does not come from the file.
    for (const auto& [before, after] : comparison.equal) {
      const bool is_said = before->line > 0 && !before->value.empty();
      if (is_said && after->origin == Origin::kDefault) AddStated(*before, after);
    }
  }

  // A part that is not read but is in the new file as well, such as a hint, is not lost.
  void AddUnread(const Description& before, const Description& after) {
    const auto key = [](const Unread& unread) {
      return std::tuple<UnreadKind, std::string_view, std::string_view>(
          unread.kind, unread.kind == UnreadKind::kComment ? "" : unread.path, unread.text);
    };
    std::set<decltype(key(Unread()))> carried;
    for (const Unread& unread : after.unread) carried.insert(key(unread));
    for (const Unread& unread : before.unread) {
      if (!carried.contains(key(unread))) Add(unread.line, NameUnread(unread));
    }
  }

  Losses Release() && {
    std::ranges::stable_sort(stated_, {}, &Stated::line);
    for (Stated& stated : stated_) losses_.stated.push_back(std::move(stated.text));
    return std::move(losses_);
  }

 private:
  struct Stated {
    int line;
    std::string text;
  };

  void AddStated(const Setting& before, const Setting* after) {
    if (misread_.contains(&before)) return;
    const bool is_written = after != nullptr && after->origin != Origin::kDefault;
    Add(before.line, OneLine(before.path) + ": " + Quote(before.value) +
                         (is_written ? " reads as " + Quote(after->value) : " is not written"));
  }

  void Add(int line, const std::string& text) {
    const std::string place = line > 0 ? ":" + std::to_string(line) : "";
    stated_.push_back({line, file_ + place + ": " + text});
  }

  const std::string& file_;
  Losses losses_;
  std::vector<Stated> stated_;
  std::set<const Setting*> misread_;
};

}  // namespace

Losses ListLosses(const std::string& file, const Description& before, const Description& after,
                  const Comparison& comparison) {
  Collector collector(file);
  collector.AddVersion(before);
  collector.AddSettings(comparison);
  collector.AddUnread(before, after);
  return std::move(collector).Release();
}

}  // namespace tools::vexorcfg
