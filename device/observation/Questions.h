#pragma once

namespace qvdevice {

/// Puts the device around the questions by which the library decides, so that each becomes part of the trace. Once,
/// when the library's classes are there.
void watchQuestions();

} // namespace qvdevice
