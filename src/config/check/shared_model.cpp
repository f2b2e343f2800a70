#include "config/check/shared_model.h"

#include "platform/immortal.h"

namespace vexor {

const SharedModel& GetSharedModel() {
  static constinit Immortal<SharedModel> model;
  return *model;
}

}  // namespace vexor
