#pragma once

/// Marks the classes and functions that librfUtils.so exports; everything else is hidden.
#define RFUTILS_EXPORT __attribute__((visibility("default")))
