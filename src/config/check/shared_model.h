// The model of a configuration file, made once for all checks: making it takes as long as the check
// of a small file.
#pragma once

#include "config/model/document_model.h"
#include "config/model/element_places.h"

namespace vexor {

struct SharedModel {
  FullRecords records;
  ElementModel root = MakeDocumentModel(records);
  ElementPlaces places{root};
};

// Any thread may call.
const SharedModel& GetSharedModel();

}  // namespace vexor
