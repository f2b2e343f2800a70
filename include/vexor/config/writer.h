// Writes a configuration file, with comments that list the valid values of many options.
//
//   _XML_FULL_CFG cfg;
//   WriteXMLConfig("default.xml", cfg, true);  // a commented file of all defaults
//
// Reading the file gives back every member that is both written and read, without the white space
// around it and with the line ends of XML (LF). The following does not survive:
//  - Members that are read but never written come back empty, or as the reader fills them: CPU and
//    PCH; PxMxCxTxScope; times, affinities, masks and ratios that some tests do not write. Texts
//    that the reader composes (AllOptions, ItemText, OverwriteCfg, SETTING) reflect the new file.
//  - ConfigState of "FACT" and "DGFX-RESET", and ranges ("-") of the first four options of
//    "MESH-GV", are written to places that are not read.
//  - Empty entries of a list and named values with empty text are written, but the reader skips
//    them. An option with a fallback that is written empty is read as the fallback.
//  - Control characters other than tab, LF and CR are dropped, as XML does not allow them. So is a
//    named value whose name is not a valid XML name in UTF-8.
// Bytes above 127 are written unchanged; for other programs to read them, they should be UTF-8.
#pragma once

#include <string>

#include "vexor/config/full_config.h"
#include "vexor/export.h"

// Writes the record to the file at `path` and returns whether the complete file is on the disk. On
// failure, also for a null `path` and if memory runs out, an existing file is unchanged; only if
// synchronising the folder fails, the complete new file may be there. With `writeDefaults` the
// record is first reset as by ResetVexorXmlConfiguration, and stays so even if writing fails. Sets
// the knob hints of the graphics tests in the record. Throws nothing. One thread at a time may use
// a record; several threads may write files from records of their own.
VEXOR_EXPORT bool WriteXMLConfig(const char* path, _XML_FULL_CFG& cfg, bool writeDefaults);

namespace vexor {

// Returns the document that WriteXMLConfig would write for the record, with LF as line end. Does
// not change the record. Throws only std::bad_alloc.
VEXOR_EXPORT std::string FormatXMLConfig(const _XML_FULL_CFG& cfg);

}  // namespace vexor
