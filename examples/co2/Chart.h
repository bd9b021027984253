#pragma once

#include "Study.h"

#include <iosfwd>

/// Draws the weekly series and the yearly means as an SVG picture.
void DrawChart(std::ostream& svg, Study const& study);
