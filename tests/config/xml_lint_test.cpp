// Compares the linter with xmllint on mutated documents.
#include "config/file/xml_lint.h"

#include <gtest/gtest.h>
#include <tinyxml2.h>

#include <algorithm>
#include <filesystem>
#include <set>
#include <sstream>

#include "config/file/xml_document.h"
#include "platform/child_process.h"
#include "temporary_folder.h"
#include "vexor/util/random.h"

namespace {

using Names = std::set<std::string>;

struct Seed {
  std::string_view document;
  bool accepts_alike;  // whether the library accepts all that xmllint accepts
};

// The seeds contain all kinds of markup, so that a few changes can produce any kind of fault. The
// library rejects processing instructions after the prolog and document types that contain ">", and
// warns about some encodings and declarations that xmllint accepts.
constexpr Seed kSeeds[] = {
    {"<!-- a - b -->\n"
     "<VEXOR a=\"1\" b-c.d='x &lt; \"y\"'>\n <Version>3.21.522.0</Version>\n"
     " <a:b/><c d = '&#65;&#x42;' ></c >R&amp;D &gt; caf\xC3\xA9 \xF0\x9F\x98\x80\n</VEXOR>\n",
     true},
    {"<VEXOR><![CDATA[ <a> & ]] ]]><!---->\n<_x1 \xC3\xA9='\xE2\x82\xAC'>]]&gt; ]] ></_x1>"
     "<e a=''/><e>\r\n\t</e>&quot;&apos;</VEXOR><!-- end -->",
     true},
    {"<?xml version='1.0' encoding='UTF-8' standalone='no'?><?a b?>\n<!DOCTYPE VEXOR SYSTEM "
     "'v.dtd'>\n<VEXOR>\n<a><b>1</b>\n"
     "<b>2</b>\n</a></VEXOR>",
     false},
    {"<?xml version='1.0' encoding='ISO-8859-1'?><VEXOR><a b='1' c='2'>x</a><?b?></VEXOR>", false},
};

// The texts that a mutation inserts.
constexpr std::string_view kPieces[] = {"<",
                                        ">",
                                        "&",
                                        "\"",
                                        "'",
                                        "/",
                                        "]]>",
                                        "--",
                                        "<!--",
                                        "-->",
                                        "<a>",
                                        "</a>",
                                        "&amp;",
                                        "&#0;",
                                        "&#x1F;",
                                        "&b;",
                                        "&#10",
                                        "<![CDATA[",
                                        "<?",
                                        "?>",
                                        "<!",
                                        "=",
                                        " ",
                                        "\n",
                                        "a",
                                        "1",
                                        ":",
                                        "\x01",
                                        "\x7F",
                                        "\xC3",
                                        "\xA9",
                                        "\xE9",
                                        "\xC3\x97",
                                        "\xEF\xBF\xBF",
                                        "\xED\xA0\x80",
                                        "\xEF\xBB\xBF",
                                        "a='1'",
                                        "<a/>",
                                        "-",
                                        ";",
                                        "#",
                                        "</VEXOR>",
                                        "xml",
                                        "]"};

std::string Mutate(std::string_view seed, UserRand& random) {
  std::string text(seed);
  const auto below = [&random](std::size_t bound) { return random.NextUint() % bound; };
  for (std::size_t changes = 1 + below(2); changes > 0; --changes) {
    const std::size_t at = below(text.size());
    const std::size_t cut = below(3) == 0 ? 1 + below(3) : 0;
    text.replace(at, cut, below(3) == 0 ? "" : kPieces[below(std::size(kPieces))]);
  }
  return text;
}

enum class Verdict : std::uint8_t { kGood, kRefused, kNotRead };

// Returns the verdict of the library: kRefused if it reads what other programs reject.
Verdict Judge(const std::string& document) {
  tinyxml2::XMLDocument parsed(true, tinyxml2::PRESERVE_WHITESPACE);
  if (vexor::ParseXml(document, parsed) != tinyxml2::XML_SUCCESS) return Verdict::kNotRead;
  const vexor::XmlLint lint = vexor::LintXml(document);
  const bool is_good = lint.faults.empty() && !lint.stop && !lint.has_content_outside_root &&
                       parsed.RootElement() != nullptr;
  return is_good ? Verdict::kGood : Verdict::kRefused;
}

// Returns the names of the files that xmllint rejects.
Names RefusedByXmllint(const std::vector<std::string>& files, const std::string& errors) {
  std::vector<std::string> words = {VEXOR_XMLLINT, "--noout", "--nonet"};
  words.insert(words.end(), files.begin(), files.end());
  ChildProcess(words, {.output = errors, .errors = errors}).Wait();
  Names refused;
  std::istringstream lines(ReadBytes(errors));
  for (std::string line; std::getline(lines, line);) {
    const std::size_t colon = line.find(':');
    if (line.find("parser error : ") == std::string::npos) continue;
    refused.insert(line.substr(0, colon));
  }
  return refused;
}

TEST(LintXml, AgreesWithXmllint) {
  if (std::filesystem::path::preferred_separator == '\\') GTEST_SKIP() << "needs xmllint";
  constexpr std::size_t kDocuments = 3000;
  const TemporaryFolder folder;
  UserRand random(5);
  std::vector<std::string> files;
  std::vector<std::string> documents;
  for (std::size_t i = 0; i < kDocuments; ++i) {
    documents.push_back(Mutate(kSeeds[i % std::size(kSeeds)].document, random));
    files.push_back(folder / std::to_string(i) + ".xml");
    WriteBytes(files.back(), documents.back());
  }
  const Names refused = RefusedByXmllint(files, folder / "errors.txt");
  int counts[3] = {};
  for (std::size_t i = 0; i < kDocuments; ++i) {
    const Verdict verdict = Judge(documents[i]);
    ++counts[static_cast<int>(verdict)];
    const bool is_refused = refused.contains(files[i]);
    if (is_refused == (verdict != Verdict::kGood)) continue;
    EXPECT_TRUE(!is_refused && !kSeeds[i % std::size(kSeeds)].accepts_alike)
        << (is_refused ? "refused" : "accepted") << " by xmllint: " << documents[i];
  }
  for (const int count : counts) EXPECT_GT(count, 200);
}

}  // namespace
