// The graphics, media, imaging and uncore tests, which share one record, and the two other tests of
// the "GT" group.
#pragma once

#include "config/tables/common_node.h"

namespace vexor {

inline constexpr std::string_view kGraphicsKnobHint = "ExitOnFail;Random;QclkCheck(SAGV only)";

// The differences between tests of the shared record: the kind of ratios, and the options that are
// written. All of them are read.
struct GraphicsTraits {
  enum class Ratios : std::uint8_t { kNumbers, kLowHigh, kGears };
  Ratios ratios = Ratios::kNumbers;
  bool empty_means_all = true;  // whether a comment says so
  bool package_affinity = false;
  bool device = false;
  bool tile = false;
  bool switch_time = true;
  bool limit_reasons = false;
};

inline constexpr std::string_view kEmptyMeansAll = "If Ratios is defined as empty, use all ratios";

constexpr std::string_view RatioComment(GraphicsTraits::Ratios ratios) {
  switch (ratios) {
    case GraphicsTraits::Ratios::kLowHigh:
      return "Valid options for tag Ratios : Low,High";
    case GraphicsTraits::Ratios::kGears:
      return "Valid options for tag Ratios : Low,Med,High,Dynamic";
    default:
      // "- -": XML comments must not contain "--".
      return "Valid options for tag Ratios : P0, P1, Pe, Pn, Pn - -, P0++, P0Pn, or digital value "
             "between 0~254, 0x0~0xFE";
  }
}

constexpr OptionOf<_GFX_CFG> RatiosRow(const GraphicsTraits& traits) {
  OptionOf<_GFX_CFG> row{
      .name = "Ratios",
      .text = &_GFX_CFG::Ratios,
      .syntax = Syntax::kRatios,
      .about = "Ratios to run; empty for all.",
      .hint = {.kind = Hint::Kind::kPlain,
               .texts = {RatioComment(traits.ratios),
                         traits.empty_means_all ? kEmptyMeansAll : std::string_view{}}}};
  if (traits.ratios != GraphicsTraits::Ratios::kNumbers) {
    row.syntax = traits.ratios == GraphicsTraits::Ratios::kLowHigh ? Syntax::kLowHighRatios
                                                                   : Syntax::kSagvRatios;
    row.about = "Levels to run; empty for all.";
  }
  return row;
}

constexpr Flow WrittenIf(bool written) { return written ? Flow::kReadWrite : Flow::kReadOnly; }

consteval auto GraphicsOptions(const GraphicsTraits& traits) {
  return Concatenate(
      common::Control<_GFX_CFG>(common::kExeCycles.ResetTo("10")),
      Options<_GFX_CFG>({
          common::kModuleAffinity.ReadOnly(),
          common::kCoreAffinity.ReadOnly(),
          common::kPxMxCxScope.ReadOnly(),
          common::kPxMxCxTxScope,
          common::kActiveTime.ResetTo("msec:100").ReadOnly(),
          common::kInStateTime.ResetTo("sec:1").ReadOnly(),
          RatiosRow(traits),
          common::kPkgAffinity.Flowing(WrittenIf(traits.package_affinity)),
          {.name = "Device",
           .text = &_GFX_CFG::Device,
           .syntax = Syntax::kUnitAffinity,
           .reset = "All",
           .about = "Graphics devices that run the test.",
           .flow = WrittenIf(traits.device)},
          {.name = "Tile",
           .text = &_GFX_CFG::Tile,
           .syntax = Syntax::kUnitAffinity,
           .reset = "All",
           .about = "Tiles of the device that run the test.",
           .flow = WrittenIf(traits.tile)},
          common::kDerivedSwitchTime.ResetTo("sec:1").Flowing(WrittenIf(traits.switch_time)),
          {.name = "LimitReasonMask",
           .text = &_GFX_CFG::LimitReasonMask,
           .syntax = Syntax::kMask,
           .reset = "0x0",
           .about = "Limit reasons that the test checks.",
           .flow = WrittenIf(traits.limit_reasons)},
          {.name = "ExitOnPassRatios",
           .text = &_GFX_CFG::ExitOnPassRatios,
           .syntax = Syntax::kExitRatios,
           .reset = "ALL",
           .about = "Ratios that must pass before the test may end early.",
           .flow = WrittenIf(traits.limit_reasons)},
      }));
}

// Options of the RC6 tests. The DVFS tests read them, too.
consteval auto IdleOptions(Flow flow) {
  return Options<_GFX_CFG>({
      {.name = "Rc0Method",
       .text = &_GFX_CFG::Rc0Method,
       .reset = "Force",
       .about = "Method of returning the unit to RC0.",
       .flow = flow},
      {.name = "ForceIdleDelay",
       .text = &_GFX_CFG::ForceIdleDelay,
       .syntax = Syntax::kDuration,
       .reset = "usec:0",
       .about = "Delay before the unit is forced to idle.",
       .flow = flow},
  });
}

consteval auto DvfsOptions(const GraphicsTraits& traits) {
  return Finish(Concatenate(GraphicsOptions(traits), IdleOptions(Flow::kReadOnly)));
}

// "RC0Time" and "RC6Time" are the RC6 tests' own names for ActiveTime and InStateTime. They take
// precedence when reading, and are the names that are written. They follow the derived switch time,
// which is computed from the common names only.
consteval auto Rc6Options(GraphicsTraits traits) {
  traits.switch_time = false;
  return Finish(Concatenate(GraphicsOptions(traits),
                            Options<_GFX_CFG>({
                                {.name = "RC0Time",
                                 .text = &_GFX_CFG::ActiveTime,
                                 .syntax = Syntax::kDuration,
                                 .reset = "msec:100",
                                 .about = "Active time between two idle periods.",
                                 .overwrite = Overwrite::kIfGiven},
                                {.name = "RC6Time",
                                 .text = &_GFX_CFG::InStateTime,
                                 .syntax = Syntax::kDuration,
                                 .reset = "sec:1",
                                 .about = "Time to stay in RC6.",
                                 .overwrite = Overwrite::kIfGiven},
                            }),
                            IdleOptions(Flow::kReadWrite)));
}

inline constexpr auto kIgfxDvfsOptions = DvfsOptions({.limit_reasons = true});
inline constexpr auto kDgfxDvfsOptions =
    DvfsOptions({.device = true, .tile = true, .limit_reasons = true});
inline constexpr auto kDgfxSagvOptions =
    DvfsOptions({.ratios = GraphicsTraits::Ratios::kLowHigh, .device = true});
inline constexpr auto kMediaDvfsOptions = DvfsOptions({.limit_reasons = true});
inline constexpr auto kImagingDvfsOptions = DvfsOptions({});
inline constexpr auto kGearOptions = DvfsOptions({.ratios = GraphicsTraits::Ratios::kGears});
inline constexpr auto kUfsOptions = DvfsOptions({.package_affinity = true, .limit_reasons = true});

inline constexpr auto kIgfxRc6Options = Rc6Options({.empty_means_all = false});
inline constexpr auto kDgfxRc6Options =
    Rc6Options({.empty_means_all = false, .device = true, .tile = true});
inline constexpr auto kMediaRc6Options = Rc6Options({});

// clang-format off
inline constexpr auto kDgfxResetOptions = Finish(Options<_DGFX_RESET_CFG>({
    common::kSwitchTime,
    common::kStartDelayTime,
    common::kExeCycles,
    common::KnobsOf("Random"),
    {.name = "ConfigState", .list = &_DGFX_RESET_CFG::ConfigState,
     .about = "A reset to run; may be repeated.", .flow = Flow::kWriteOnly},
}));

inline constexpr auto kFanSpeedOptions = Finish(Options<_FANSPEED_CTR_CFG>({
    {.name = "Device", .text = &_FANSPEED_CTR_CFG::Device, .syntax = Syntax::kUnitAffinity,
     .reset = "All", .about = "Graphics devices whose fans are controlled."},
    {.name = "ControlPoint", .text = &_FANSPEED_CTR_CFG::ControlPoint,
     .about = "Temperature and speed of each control point."},
    {.name = "NumFanSpeedCtrPoints", .text = &_FANSPEED_CTR_CFG::NumFanSpeedCtrPoints,
     .syntax = Syntax::kCount, .reset = "1", .about = "Number of control points."},
    common::kSwitchTime,
    common::kStartDelayTime,
    common::kExeCycles,
    common::kLogLevel,
}));
// clang-format on

}  // namespace vexor
