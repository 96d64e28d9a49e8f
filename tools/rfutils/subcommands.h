#pragma once

#include "support/subcommand.h"

namespace rfu::command {

// Each in the source file of its name or, where it shares one, of what the two have in common.
extern const Subcommand kCatalogue;
extern const Subcommand kCheck;
extern const Subcommand kCompare;
extern const Subcommand kConvert;
extern const Subcommand kCut;
extern const Subcommand kDd;
extern const Subcommand kDms;
extern const Subcommand kFreq;
extern const Subcommand kMask;
extern const Subcommand kMerge;
extern const Subcommand kOccupancy;
extern const Subcommand kPeaks;
extern const Subcommand kPower;
extern const Subcommand kProfile;
extern const Subcommand kRange;
extern const Subcommand kRaster;
extern const Subcommand kScale;
extern const Subcommand kSetups;
extern const Subcommand kTab;
extern const Subcommand kTrace;
extern const Subcommand kUnits;
extern const Subcommand kWaterfall;
extern const Subcommand kWidth;

/// In the order of the overview.
inline constexpr const Subcommand* kSubcommands[] = {
    &kConvert, &kUnits,     &kScale,   &kFreq,      &kWidth, &kRange, &kCatalogue, &kSetups,
    &kTrace,   &kWaterfall, &kPeaks,   &kOccupancy, &kPower, &kMask,  &kCompare,   &kCut,
    &kMerge,   &kRaster,    &kProfile, &kTab,       &kCheck, &kDms,   &kDd};

}  // namespace rfu::command
