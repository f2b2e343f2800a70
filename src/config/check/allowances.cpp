#include "config/check/allowances.h"

#include <algorithm>
#include <string>

#include "config/tables/finding_kinds.h"
#include "util/text.h"

namespace vexor {
namespace {

using tinyxml2::XMLComment;
using tinyxml2::XMLNode;

constexpr std::string_view kCall = "vexorcfg:";
constexpr std::string_view kAllow = "allow";
constexpr std::string_view kBetween = " \t\r\n,";

std::string_view TakeWord(std::string_view& rest) {
  rest.remove_prefix(std::min(rest.find_first_not_of(kBetween), rest.size()));
  const std::string_view word = rest.substr(0, rest.find_first_of(kBetween));
  rest.remove_prefix(word.size());
  return word;
}

const FindingRow* FindRow(std::string_view code) {
  const auto* const row = std::ranges::find_if(kFindingKinds, [code](const FindingRow& known) {
    return EqualsIgnoreCase(known.code, code);
  });
  return row == kFindingKinds.end() ? nullptr : &*row;
}

bool IsBlank(const XMLNode& node) {
  return node.ToText() != nullptr && TrimSpace(node.Value()).empty();
}

// Returns whether nothing but comments is in front of the node.
bool IsFirst(const XMLNode& node) {
  for (const XMLNode* before = node.PreviousSibling(); before != nullptr;
       before = before->PreviousSibling()) {
    if (before->ToComment() == nullptr && !IsBlank(*before)) return false;
  }
  return true;
}

// Returns the node in which the comment allows findings; null if no element follows it.
const XMLNode* FindScope(const XMLComment& comment) {
  const XMLNode* const parent = comment.Parent();
  const XMLNode* const next = comment.NextSiblingElement();
  const tinyxml2::XMLDocument* const document = comment.GetDocument();
  const bool is_before_root = parent == document && next == document->RootElement();
  const bool is_first_in_root = parent == document->RootElement() && IsFirst(comment);
  return is_before_root || is_first_in_root ? document : next;
}

}  // namespace

bool IsAllowance(std::string_view comment) {
  constexpr std::string_view kBegin = "<!--";
  comment.remove_prefix(std::min(comment.size(), kBegin.size()));
  comment = TrimSpace(comment);
  if (!comment.starts_with(kCall)) return false;
  comment.remove_prefix(kCall.size());
  return TakeWord(comment) == kAllow;
}

Allowances::Allowances(const tinyxml2::XMLDocument& document, Findings& findings)
    : document_(document) {
  CollectComments(document, findings);
}

void Allowances::CollectComments(const XMLNode& parent, Findings& findings) {
  for (const XMLNode* node = parent.FirstChild(); node != nullptr; node = node->NextSibling()) {
    if (const XMLComment* const comment = node->ToComment()) AddComment(*comment, findings);
    CollectComments(*node, findings);
  }
}

void Allowances::CollectPlaces(const XMLNode& parent) {
  for (const XMLNode* node = parent.FirstChild(); node != nullptr; node = node->NextSibling()) {
    if (node->ToText() != nullptr) continue;
    places_.push_back({node->GetLineNum(), node});
    CollectPlaces(*node);
  }
}

void Allowances::AddComment(const XMLComment& comment, Findings& findings) {
  std::string_view rest = TrimSpace(comment.Value());
  if (!rest.starts_with(kCall)) return;
  rest = TrimSpace(rest.substr(kCall.size()));
  const std::string_view all = rest;
  const bool is_allow = TakeWord(rest) == kAllow;
  if (is_allow && !TrimSpace(rest).empty()) return AddCodes(comment, rest, findings);
  findings
      .Add(FindingKind::kWrongAllowance, comment, "", all,
           is_allow ? "no code to allow" : "unknown instruction in a vexorcfg comment")
      .expected = "allow and codes, such as allow VX019";
}

void Allowances::AddCodes(const XMLComment& comment, std::string_view codes, Findings& findings) {
  const XMLNode* const scope = FindScope(comment);
  for (std::string_view word; !(word = TakeWord(codes)).empty();) {
    const FindingRow* const row = FindRow(word);
    if (row == nullptr || row->ends_reading) {
      findings
          .Add(FindingKind::kWrongAllowance, comment, "", word,
               row == nullptr ? "unknown code to allow" : "code that cannot be allowed")
          .expected = "a code such as VX019";
      continue;
    }
    by_scope_.emplace(std::pair(scope, row->code), allowances_.size());
    allowances_.push_back({.comment = &comment, .scope = scope, .code = row->code});
  }
}

void Allowances::Apply(Findings& findings) {
  if (allowances_.empty()) return;
  CollectPlaces(document_);
  const auto is_allowed = [this](const Finding& finding, const XMLNode* at) {
    return at != nullptr ? Allows(finding.code, at) : AllowsOnLine(finding.code, finding.line);
  };
  findings.Allow(is_allowed);
  AddIdle(findings);
  findings.Allow(is_allowed);  // the findings of AddIdle
}

bool Allowances::Allows(std::string_view code, const XMLNode* node) {
  for (; node != nullptr; node = node->Parent()) {
    const auto found = by_scope_.find(std::pair(node, code));
    if (found == by_scope_.end()) continue;
    allowances_[found->second].is_used = true;
    return true;
  }
  return false;
}

// For findings in the text of the file, of which only the line is known: those of a line are
// allowed if they are in one of the nodes that begin there, or else in the last node before.
bool Allowances::AllowsOnLine(std::string_view code, int line) {
  const auto [known, is_new] = lines_.try_emplace(std::pair(line, code), false);
  if (!is_new) return known->second;
  auto place = std::ranges::lower_bound(places_, line, {}, &Place::line);
  const auto end = std::ranges::upper_bound(places_, line, {}, &Place::line);
  if (place == end && place != places_.begin()) --place;
  bool is_allowed = Allows(code, &document_);
  for (; place != end; ++place) is_allowed = Allows(code, place->node) || is_allowed;
  return known->second = is_allowed;
}

void Allowances::AddIdle(Findings& findings) const {
  const std::string_view idle = GetFindingRow(FindingKind::kIdleAllowance).code;
  for (const Allowance& allowance : allowances_) {
    if (allowance.is_used || allowance.code == idle) continue;
    findings.Add(FindingKind::kIdleAllowance, *allowance.comment, "", allowance.code,
                 allowance.scope == nullptr ? "allowed, but no element follows the comment"
                                            : "allowed, but there is no such finding");
  }
}

}  // namespace vexor
