#pragma once

/// From now on this process starts nothing that is not confined to the folders that QVDEVICE_CONTAINER and
/// QVDEVICE_DEVICE name: a program of this build always is, one of the machine then is, too. What is neither is
/// refused.
extern "C" void qv_confine_what_this_becomes();
