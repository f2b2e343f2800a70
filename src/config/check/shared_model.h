// The model of a configuration file. It is the same for every file, and takes time to make, so all
// checks and edits share one.
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
