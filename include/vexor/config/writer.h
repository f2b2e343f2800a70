// Writing a configuration file, with comments that list the valid values of many options.
//
//   _XML_FULL_CFG cfg;
//   WriteXMLConfig("default.xml", cfg, true);  // a commented file of all defaults
//
// Reading the file gives back every field that is both written and read, without the white space
// around it and with the line ends of XML (LF). What a file does not carry:
//  - Fields that are read and never written come back empty, or as the reader fills them: CPU and
//    PCH; PxMxCxTxScope; the times, affinities, masks and ratios that a test's section leaves out.
//    The texts that reading builds (AllOptions, ItemText, OverwriteCfg, SETTING) follow the file.
//  - ConfigState of "FACT" and "DGFX-RESET", and ranges ("-") of the first four options of
//    "MESH-GV", are written where no reader looks for them.
//  - Empty entries of a list and named values without a text are written and skipped by the reader;
//    an empty text of an option that has a fallback is read as that.
//  - Control characters other than tab, LF and CR, which XML does not have, are left out of texts;
//    so is a named value whose name, in UTF-8, is no name of an XML element.
// Bytes above 127 are written as they are: read by other programs, they should be UTF-8.
#pragma once

#include <string>

#include "vexor/config/full_config.h"
#include "vexor/export.h"

// Writes the record to the file at `path` and returns whether it is there, complete and on the
// disk. Otherwise, or when `path` is null, an existing file is as it was before; where only the
// disk did not take the file's new name for certain, the new one may be there, complete. With
// `writeDefaults` the record is first reset like by ResetVexorXmlConfiguration: the caller holds
// what was written, whether or not that succeeded. The knob hints of the graphics tests are set in
// the record. False, too, when memory runs out; throws nothing. One thread at a time may use a
// record; files may be written at the same time.
VEXOR_EXPORT bool WriteXMLConfig(const char* path, _XML_FULL_CFG& cfg, bool writeDefaults);

namespace vexor {

// Returns the document that WriteXMLConfig would save for the record, lines ended by LF. The record
// stays as it is, knob hints too. Throws std::bad_alloc only.
VEXOR_EXPORT std::string FormatXMLConfig(const _XML_FULL_CFG& cfg);

}  // namespace vexor
