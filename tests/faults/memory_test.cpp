// Exported functions when memory runs out at any point: they return the ordinary result or the
// documented one, or throw std::bad_alloc, and the next call works. The sanitizers find leaks and
// bad accesses.
#include <gtest/gtest.h>
#include <tinyxml2.h>

#include <algorithm>
#include <cstdlib>
#include <iostream>
#include <memory>
#include <new>
#include <string>
#include <vector>

#include "config/config_files.h"
#include "faults/allocation_faults.h"
#include "logging/log_test_tools.h"
#include "source_dir.h"
#include "temporary_folder.h"
#include "vexor/vexor.h"

namespace {

using Faults = AllocationFaults;

// Makes a call and returns its result as text. Only the call itself, inside `Arm`, may fail.
struct Entry {
  const char* name;
  std::string (*run)();
  // The documented result of a call that does not throw std::bad_alloc.
  const char* failure = nullptr;
};

const TemporaryFolder& Folder() {
  static const TemporaryFolder folder;
  return folder;
}

std::string PathOf(std::string_view name, std::string_view content) {
  WriteBytes(Folder() / name, content);
  return Folder() / name;
}

std::string Join(const std::vector<std::string>& texts) {
  std::string joined;
  for (const std::string& text : texts) joined += text + '\n';
  return joined;
}

std::string TextOf(bool flag) { return flag ? "true" : "false"; }

// One of each kind of section, with texts too long to stand in a string itself.
const std::string& SmallDocument() {
  static const std::string document = Document(
      "<TEST_CONTROL_CFG><AutoRunCfg><CSTATES>true</CSTATES></AutoRunCfg>"
      "<TestTraceCfg><Name>CSTATES_Core_Con:10 and what follows</Name></TestTraceCfg>"
      "</TEST_CONTROL_CFG><GLOBALPM><CORE><CSTATES><ActiveTime>msec:80-120000000000</ActiveTime>"
      "<Aktivetime/></CSTATES></CORE></GLOBALPM><GLOBALCONFIGURATION><SysConfiguration><SYSTEM>"
      "<OS><Power_Scheme>High-Performance, always</Power_Scheme></OS></SYSTEM></SysConfiguration>"
      "<CustomConfiguration><MSR_CFG><MSR><Address>0x00000000000001A0</Address></MSR></MSR_CFG>"
      "</CustomConfiguration></GLOBALCONFIGURATION>");
  return document;
}

const _XML_FULL_CFG& SmallConfig() {
  static const auto cfg = std::make_unique<_XML_FULL_CFG>(ReadDocument(SmallDocument()));
  return *cfg;
}

std::string ReadsAFile() {
  const std::string path = PathOf("read.xml", SmallDocument());
  const auto cfg = std::make_unique<_XML_FULL_CFG>();
  const bool read =
      Faults::Arm([&] { return VexorConfigParser().ReadXMLPar(path, cfg.get(), true, true); });
  return read ? vexor::FormatXMLConfig(*cfg) : "false";
}

std::string WritesAFile() {
  const std::string path = PathOf("written.xml", "old");
  const auto cfg = std::make_unique<_XML_FULL_CFG>(SmallConfig());
  const bool written = Faults::Arm([&] { return WriteXMLConfig(path.c_str(), *cfg, true); });
  const std::string content = ReadBytes(path);
  EXPECT_EQ(content == "old", !written);
  return written ? content : "false";
}

// Rethrows the std::bad_alloc of the armed call after the test has checked what is left.
template <class Call>
std::exception_ptr TryArmed(const Call& call) {
  try {
    Faults::Arm(call);
    return nullptr;
  } catch (const std::bad_alloc&) {
    return std::current_exception();
  }
}

std::string SetsASetting() {
  const std::string path = PathOf("settings", "a = 1\nlonger than a text itself = 2\n");
  ConfigFile file(path);
  bool written = false;
  const std::exception_ptr failed =
      TryArmed([&] { written = file.WriteKeyValue("key", std::string(40, 'v')); });
  if (failed) {
    EXPECT_EQ(ReadBytes(path), "a = 1\nlonger than a text itself = 2\n");
    EXPECT_TRUE(file.WriteKeyValue("b", "3"));
    const ConfigFile again(path);  // ends the process when the file became malformed
    EXPECT_EQ(again.GetValueOfKey("a") + again.GetValueOfKey("b"), "13");
    std::rethrow_exception(failed);
  }
  return TextOf(written) + ReadBytes(path);
}

std::string ReadsSettings() {
  const std::string path = PathOf(
      "settings", "a = 1\n" + std::string(40, 'k') + " = " + std::string(2000, 'v') + "\nb=2");
  return Faults::Arm([&] {
    const ConfigFile file(path);
    return file.GetValueOfKey("a") + file.GetValueOfKey(std::string(40, 'k')) +
           file.GetValueOfKey("b");
  });
}

// A log that has a file goes on after whatever the call did to it.
template <class Call>
std::string Log(const Call& call) {
  const TemporaryFolder folder;
  VexorLogging log("Time no more,Notes that are longer than a text itself");
  log.SetLinesLimitToSplit(4);
  EXPECT_TRUE(Open(log, folder, "run"));
  log.LogLine("first line", TRACE_DEBUG);
  const std::exception_ptr failed = TryArmed([&] { call(log); });
  log.UnlockLogging();
  log.LogNote("last line", TRACE_DEBUG);
  EXPECT_TRUE(log.FlushToDisk());
  const std::thread::id self = std::this_thread::get_id();
  VexorLogging::GetThreadTestId(self);
  EXPECT_TRUE(log.GetThreadLogLevel(self) >= TRACE_NO_LOG);
  EXPECT_EQ(VexorLogging::GetThreadLogFileReference(self), &log);
  std::string content;
  for (const std::string& name : GetFilesInFolder(folder.path())) {
    content += ReadLog(folder / name);
    EXPECT_TRUE(content.ends_with('\n'));
  }
  EXPECT_NE(content.find("first line\n"), std::string::npos);
  EXPECT_NE(content.find("last line"), std::string::npos);
  if (failed) std::rethrow_exception(failed);
  return content + log.GetLogFile().substr(folder.path().size());
}

class FrontEnd : public ContextUtils {
 public:
  bool CreateAutoRun(std::string /*script*/, unsigned char /*flags*/) override {
    return ++calls > 0;
  }
  int calls = 0;
};

// It hears of every move, at the latest when the log is used again.
std::string TellsTheFrontEnd() {
  const TemporaryFolder folder;
  FrontEnd front_end;
  VexorLogging log("header");
  log.SetLinesLimitToSplit(2);
  log.SetAutoRunInfo(&front_end, {"a script whose name is longer than a text itself", '\0'});
  EXPECT_TRUE(Open(log, folder, "run"));
  log.LogLine("1", TRACE_DEBUG);
  const std::exception_ptr failed = TryArmed([&] {
    log.LogLine("2", TRACE_DEBUG);
    log.LogLine(std::string(40, '3'), TRACE_DEBUG);
  });
  log.LogLine("4", TRACE_DEBUG);
  EXPECT_EQ(static_cast<std::size_t>(front_end.calls) + 1, GetFilesInFolder(folder.path()).size());
  if (failed) std::rethrow_exception(failed);
  return "told";
}

std::string KeepsLines() {
  const std::string line(40, 'k');
  const TemporaryFolder folder;
  VexorLogging log("header");
  log.SetLinesLimitToSplit(3);
  EXPECT_TRUE(Open(log, folder, "run", TRACE_DEBUG, LOG_FILE_NEW, true));
  for (const char c : {'1', '2', '3', '4'}) log.LogLine(line + c, TRACE_DEBUG);
  const std::exception_ptr failed = TryArmed([&] { log.UnlockLogging(); });
  log.SaveFile();
  std::string content;
  for (const std::string& name : GetFilesInFolder(folder.path())) content += ReadLog(folder / name);
  for (const char c : {'1', '2', '3', '4'}) {
    const std::size_t at = content.find(line + c + '\n');
    EXPECT_NE(at, std::string::npos) << "lost " << c;
    EXPECT_EQ(content.find(line + c + '\n', at + 1), std::string::npos) << "doubled " << c;
  }
  if (failed) std::rethrow_exception(failed);
  return content;
}

std::string StartsALog() {
  const TemporaryFolder folder;
  VexorLogging log("header");
  const auto start = [&] { return Open(log, folder, "a name longer than a text itself"); };
  const std::exception_ptr failed = TryArmed([&] { EXPECT_TRUE(start()); });
  EXPECT_TRUE(!failed || start());
  log.LogLine("line", TRACE_DEBUG);
  EXPECT_EQ(ReadLog(log.GetLogFile()), "header\nline\n");
  if (failed) std::rethrow_exception(failed);
  return "started";
}

std::string EndsALog() {
  const std::thread::id self = std::this_thread::get_id();
  const TemporaryFolder folder;
  auto log = std::make_unique<VexorLogging>("header");
  EXPECT_TRUE(Open(*log, folder, "run", TRACE_DEBUG, LOG_FILE_NEW, true));
  log->LogLine(std::string(40, 'k'), TRACE_DEBUG);
  Faults::Arm([&] { log.reset(); });
  EXPECT_EQ(VexorLogging::GetThreadLogFileReference(self), nullptr);
  return "ended";
}

template <class Parse>
std::string ParseAll(const Parse& parse) {
  return Faults::Arm([&] {
    parse();
    return std::string("parsed");
  });
}

char** Arguments() {
  static std::string texts[] = {"tool", "/cstate", "-at", "msec:80-120000000000", "-unknown option",
                                "/all", "-r"};
  static char* argv[std::size(texts)];
  std::ranges::transform(texts, argv, [](std::string& text) { return text.data(); });
  return argv;
}

constexpr int kArguments = 7;

constexpr Entry kEntries[] = {
    {"ReadXMLPar", ReadsAFile, "false"},
    {"WriteXMLConfig", WritesAFile, "false"},
    {"ResetVexorXmlConfiguration",
     [] {
       const auto cfg = std::make_unique<_XML_FULL_CFG>();
       Faults::Arm([&] { ResetVexorXmlConfiguration(*cfg); });
       return vexor::FormatXMLConfig(*cfg);
     }},
    {"FormatXMLConfig",
     [] { return Faults::Arm([] { return vexor::FormatXMLConfig(SmallConfig()); }); }},
    {"CheckXMLConfig",
     [] {
       const std::string path = PathOf("check.xml", SmallDocument());
       std::string found;
       for (const auto& f : Faults::Arm([&] { return vexor::CheckXMLConfig(path); })) {
         found += f.path + f.what + f.suggestion + '\n';
       }
       return found;
     }},
    {"SetOptionInText",
     [] {
       return Faults::Arm(
                  [] { return vexor::SetOptionInText(SmallDocument(), "SDC/ActiveTime", "sec:3"); })
           .content;
     }},
    {"FixText", [] { return Faults::Arm([] { return vexor::FixText(SmallDocument()); }).content; }},
    {"MigrateText",
     [] { return Faults::Arm([] { return vexor::MigrateText(SmallDocument()); }).content; }},
    {"SetOption",
     [] {
       const auto cfg = std::make_unique<_XML_FULL_CFG>();
       Faults::Arm([&] { return vexor::SetOption(*cfg, "SDC/ActiveTime", "sec:3"); });
       return cfg->GlobalPM.SDC.ActiveTime;
     }},
    {"DescribeXMLConfigText",
     [] {
       const auto d = Faults::Arm([] { return vexor::DescribeXMLConfigText(SmallDocument()); });
       std::string settings = d.error;
       for (const auto& s : d.settings) settings += s.path + s.value + '\n';
       return settings;
     }},
    {"GetXMLPMTestsInfo",
     [] { return Join(Faults::Arm([] { return GetXMLPMTestsInfo(SmallConfig()); })); }},
    {"GetXMLTestControlInfo",
     [] { return Join(Faults::Arm([] { return GetXMLTestControlInfo(SmallConfig()); })); }},
    {"GetXMLGlobalConfigInfo",
     [] { return Join(Faults::Arm([] { return GetXMLGlobalConfigInfo(SmallConfig()); })); }},
    {"GetXMLSchema", [] { return Faults::Arm(vexor::GetXMLSchema); }},
    {"GetOptionReference", [] { return Faults::Arm(vexor::GetOptionReference); }},
    {"FindOptions",
     [] {
       std::string found;
       for (const auto& o : Faults::Arm([] { return vexor::FindOptions("CSTATES/ActiveTime"); })) {
         found += o.path + o.preset;
       }
       return found;
     }},
    {"CheckSyntax",
     [] {
       return ParseAll([] {
         for (const auto& syntax : vexor::GetSyntaxes()) {
           vexor::CheckSyntax(syntax.name, syntax.example);
           vexor::CheckSyntax(syntax.name, "a text that is good by no syntax");
         }
       });
     }},
    {"option parsers",
     [] {
       return ParseAll([] {
         ParsePkgAffinity("Specific:[0,2-40]");
         ParseUnitAffinity("0,2-40", 1);
         ParseThreadAffinity("Any:0,2-40");
         GetAffinityString(vexor::kAffinityCCoreAtom);
         std::vector<std::vector<int>> lists;
         ParsePerCStateSetting("C1:[];C10:[0,2-4]", lists, false);
         ParseExeCstates("C1;C6;C10");
         ParseExeIceSleepStates("D0I3;Power-Off");
         ParsePECIWrPkgCfgCmdsList("Pkg-Temperature-0;0x1A", "1;2", "3");
         ParsePECIRdMSRCmdsList("Performance-Status:3");
         ParsePECIPciCfgCmdsList("0:0:31:0:0x40;0:0:31:0:0x40:0xFFFFFF00:0x1");
         std::vector<std::uint16_t> ratios;
         DecodeRatios("P0...Pn", {24, 8, 16, 1}, true, ratios, 1);
         vexor::ParseExePstates("Specific:8,P1;12-9");
         ParseSleepStates("S0ix; S3=sec:30-60");
         ParseWakeEvents("RTC;USB");
         ParseOnTimeType("msec:100000000000000-200000000000000");
         ParseExeCycleTimeType("PerSet:300000000000000", 3, 1, 1);
         TimeUnitVerifyFormat("300000000000000:msec", true, true, "sec");
         GetUnitTimeString(ParseOnTimeType("sec:100000000000-200000000000"));
         vexor::ParseRatioSpread("1;2;3;4;5;6;7;8");
         vexor::ParseSagvRatios("1;2-5;P0");
         vexor::ParseTrendRatios("Specific:1,2,3-40");
         vexor::ParseTurboActivationRatios("1;2;3-9");
         vexor::ParseScope("Package;Module;Core;Thread");
         vexor::ParseTimeout("msec:100000000000000");
       });
     }},
    {"numbers and strings",
     [] {
       return ParseAll([] {
         IntergerList2HexString(GetIntegerList("[1,3-50]", ',', 0), true);
         GetDoubleList("0.5-20", ',', 0, 0.5);
         BitsMaskConvert(~0ULL);
         std::vector<std::string> items;
         Splits("an item longer than a text itself, and another", ',', items);
         StringContainsKeyword("an item longer than a text itself; C8", "c8", ';', true);
         GetDoubleValue("12345678901234567890.5", 0);
         BitsCount2List(40);
         IntergerList2DecString(GetIntergerRange("3-50"), true);
         RemoveZerosFromNumber(1e300);
         SplitByString("an item longer than a text itself, and another", ", ");
         ConcatCharVec({"an item longer", "than a text itself"}, ", ", "; ", true, true);
         std::string text = PrependtoRange("a prefix longer than a text", "1-3,5");
         StringReplaceSubstring(text, "r", "a text longer than what it replaces");
         RemoveUnits(StringToUpper(Trim(StringReplace(text, 'a', 'b'))));
         UpdateknobsOptions(text, "ExitOnFail", "eof", "true");
       });
     }},
    {"time stamps",
     [] {
       const std::string now =
           Faults::Arm([] { return GetCurTimeStamp() + CurrentTimeDateAsString(true, true); });
       return std::to_string(now.size());
     }},
    {"names and error codes",
     [] {
       return Faults::Arm([] {
         const VEXOR_PM_TEST_ID test = ParsePMTestID("cstate", true);
         vexor::GetErrorTags(test, ~0U);
         return GetPMTestName(test) + GetErrorCode(test, ~0U) + GetKeywordShortName("CoreAffinity");
       });
     }},
    {"command line",
     [] {
       const auto cfg = std::make_unique<_XML_FULL_CFG>();
       std::vector<std::string> faults;
       Faults::Arm([&] {
         getCmdOptions(Arguments(), kArguments, "-at");
         for (const auto& node : getCmdPMTestsOptions(Arguments(), kArguments, faults)) {
           vexor::ApplyTestOptions(*cfg, node);
         }
       });
       return Join(faults) + vexor::FormatXMLConfig(*cfg);
     }},
    {"ConfigFile", ReadsSettings},
    {"WriteKeyValue", SetsASetting},
    {"files",
     [] {
       const std::string path =
           PathOf("lines", std::string(5000, 'x') + "\nthe line that is sought");
       std::string line;
       return Faults::Arm([&] {
         FindLineInFile(path, "sought", line);
         return ReadFile(path, true) + line + std::to_string(FindStrInFile(path, "sought")) +
                GetFileBaseName(path) + GetFilePath(VexorLogging::BuildLogFile(path, ""));
       });
     }},
    {"ReadHostIpFile",
     [] {
       NameHostIpFile(PathOf("host", std::string(3000, ' ') + "192.168.100.100"));
       std::string address = Faults::Arm(ReadHostIpFile);
       NameHostIpFile("no such file");
       return address;
     }},
    {"Initialize", StartsALog},
    {"~VexorLogging", EndsALog},
    {"UnlockLogging", KeepsLines},
    {"LogLine over the limit",
     [] {
       return Log([](VexorLogging& log) {
         for (int i = 0; i < 6; ++i) log.LogLine("a line longer than a text itself", TRACE_DEBUG);
       });
     }},
    {"front end", TellsTheFrontEnd},
    {"MakeFolders",
     [] {
       const TemporaryFolder folder;
       const std::string path = folder / "a folder/with a name longer than a text itself";
       return Faults::Arm([&] { return vexor::MakeFolders(path).message(); });
     }},
    {"ContinueLog",
     [] {
       const TemporaryFolder folder;
       VexorLogging log("header");
       log.SetLinesLimitToSplit(2);
       WriteBytes(folder / "a name longer than a text itself_3.csv", "line\n");
       Faults::Arm([&] {
         vexor::ContinueLog(log, folder.path(), "a name longer than a text itself", TRACE_NO_LOG);
       });
       return log.GetLogFile().substr(folder.path().size());
     }},
    {"LogData",
     [] {
       return Log([](VexorLogging& log) {
         log.LogData({"a cell longer, \"than\" a text itself"}, TRACE_DEBUG);
         log.LogMsgData("note", TRACE_DEBUG, "request", "status");
         VexorLogging::LogSpecificLevel("a line longer than a text itself", TRACE_DEBUG);
         VexorLogging::SetThreadAffinityLog(std::this_thread::get_id(), 10000, 20000, 30000, 40000);
       });
     }},
    {"UpdateHeaderLine",
     [] {
       return Log([](VexorLogging& log) {
         log.UpdateHeaderLine("a new header longer than a text itself,Notes");
         log.SetAutoRunInfo(nullptr, {"a script whose name is longer than a text itself", 2});
         log.SetLogOvrOptions("options that are longer than a text itself");
       });
     }},
    {"GetWorkLoadsXML",
     [] {
       const std::string text = "a duration that is longer than a text itself";
       tinyxml2::XMLDocument document;
       document.Parse(
           Document(Wrapped("WORKLOADS", Wrapped("CopyCompare", Wrapped("Duration", text))))
               .c_str());
       const auto workloads = std::make_unique<_WORKLOADS_XMLCFG>();
       Faults::Arm([&] { GetWorkLoadsXML(*workloads, document.RootElement()); });
       return workloads->CopyCompare.Duration;
     }},
    {"SaveFile",
     [] {
       const std::string path = PathOf("saved", "old");
       return Faults::Arm([&] { return vexor::SaveFile(path, "new").message(); }) + ReadBytes(path);
     }},
    {"CreateXMLElement",
     [] {
       tinyxml2::XMLDocument document;
       tinyxml2::XMLElement* const parent = document.NewElement("parent");
       document.InsertEndChild(parent);
       Faults::Arm([&] {
         VexorConfigParser().CreateXMLElement(parent, &document, "a-name", std::string(40, 't'));
       });
       return Faults::Arm([&] { return GetXMLText(parent, "a-name", ""); });
     }},
};

// Lets one allocation of the call fail after another, until the call succeeds. Schema and reference
// make thousands of allocations, so later ones are skipped at growing intervals unless
// VEXOR_EVERY_ALLOCATION is set.
int RunOutOfMemory(const Entry& entry, Faults::Kind kind) {
  static const bool is_every = std::getenv("VEXOR_EVERY_ALLOCATION") != nullptr;
  Faults::Set(0, kind);
  const std::string expected = entry.run();
  int faults = 0;
  for (std::uint64_t nth = 1;; nth += is_every ? 1 : 1 + nth / 30, ++faults) {
    Faults::Set(nth, kind);
    std::string result;
    bool threw = false;
    try {
      result = entry.run();
    } catch (const std::bad_alloc&) {
      threw = true;
    }
    const bool fired = Faults::Fired();
    const bool is_documented = threw ? entry.failure == nullptr
                                     : result == expected || (fired && entry.failure != nullptr &&
                                                              result == entry.failure);
    EXPECT_TRUE(is_documented) << entry.name << ", allocation " << nth
                               << (threw ? ": threw" : ": gave " + result.substr(0, 500));
    Faults::Set(0, kind);
    if (!fired || !is_documented) return faults;
    EXPECT_TRUE(nth > 50 || entry.run() == expected) << entry.name << " after allocation " << nth;
  }
}

// The four vectors of the routing grow now and then, all at the same registration.
TEST(Memory, RegistersAThreadCompletelyOrNotAtAll) {
  const VexorLogging log;
  int faults = 0;
  for (int i = 0; i < 300; ++i) {
    const auto test = static_cast<VEXOR_PM_TEST_ID>(1000 + i);
    const auto level = static_cast<TRACE_LEVEL>(i);
    Faults::Set(1 + static_cast<std::uint64_t>(i) % 4, Faults::Kind::kOnce);
    try {
      Faults::Arm([&] { VexorLogging::SetThreadTestLog({}, test, level, nullptr); });
      EXPECT_EQ(log.GetTestLogLevel(test), level);
    } catch (const std::bad_alloc&) {
      ++faults;
      EXPECT_EQ(log.GetTestLogLevel(test), TRACE_INFORMATION);
    }
  }
  EXPECT_GT(faults, 4);
}

TEST(Memory, MayRunOutAnywhere) {
  NameHostIpFile("no such file");
  const QuietConsole quiet;
  std::cout.setstate(std::ios::failbit);  // what is printed meanwhile is of no interest
  int faults = 0;
  for (const Entry& entry : kEntries) {
    for (const auto kind : {Faults::Kind::kOnce, Faults::Kind::kFromThenOn}) {
      faults += RunOutOfMemory(entry, kind);
    }
  }
  std::cout.clear();
  std::cout << faults << " allocations failed in " << std::size(kEntries) << " entries\n";
}

}  // namespace
