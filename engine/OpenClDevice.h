// The OpenCL device that a GPU engine (device -2) would use, and its driver,
// for reports that describe the machine a run was made on.
#pragma once

#include "engine/Pixmill.h"

// Fills `name` and `driver` (each NUL-terminated, cut to its size) with the
// device's name and driver version. 0 on success; PIXMILL_E_NO_DEVICE with
// empty texts when there is no OpenCL device (or none of the name that
// TACHYRUN_OPENCL_DEVICE asks for).
PIXMILL_API int PixmillDescribeOpenClDevice(char* name, int nameSize, char* driver, int driverSize);
