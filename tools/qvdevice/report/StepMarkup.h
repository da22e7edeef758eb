// One step of the timeline as HTML.
#pragma once

#include "Markup.h"
#include "StepReport.h"

namespace qvdevice {

/// The step with its findings, its log folded away, and the picture of the screen beside it.
Markup stepMarkup(const Step& step, std::size_t number);

} // namespace qvdevice
