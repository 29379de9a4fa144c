#pragma once

// Marks what leaves the shared library; everything else is built with hidden visibility.
#define KORTAVIN_API __attribute__((visibility("default")))
