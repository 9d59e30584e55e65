#pragma once

// Whether the pixel code may take its fast paths: vector kernels, work
// limited to where it can change anything, pictures kept between redraws
// and only partly renewed. Every fast path gives the bits of the plain one;
// switched off, the plain per-pixel code runs everywhere, so tests can
// compare both. Switch only while no pixel work runs.
bool fastPaths();
void setFastPaths(bool on);
