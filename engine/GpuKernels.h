// OpenCL C source of the device kernels, built once per GPU engine.
#pragma once

extern const char* const kPixmillKernelSource;
