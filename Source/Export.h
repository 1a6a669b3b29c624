#pragma once

/// Marks what a library of this project offers to others; everything else is compiled with hidden visibility.
#define ORV_EXPORT __attribute__((visibility("default")))
