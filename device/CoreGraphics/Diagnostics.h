#pragma once

/// Says on standard error why a function of the platform's does nothing: "CGImageCreate: ...".
void QVSayWhy(const char* function, const char* why);
