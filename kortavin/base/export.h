#pragma once

// Marks what leaves the shared library; everything else is built with hidden visibility.
#define KORTAVIN_API __attribute__((visibility("default")))

// Marks what leaves it for libkortavin-qt alone, a library of the same build. Its headers are not installed.
#define KORTAVIN_SEAM KORTAVIN_API
