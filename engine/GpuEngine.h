// OpenCL backend. Each picture call uploads the source rectangle, runs one
// kernel and reads the destination rectangle back; device buffers and the
// built program stay with the engine.
#pragma once

#include <CL/cl.h>

#include <memory>
#include <string>

#include "engine/PixmillEngine.h"

class GpuEngine : public PixmillEngine {
 public:
  // Picks a device (TACHYRUN_OPENCL_DEVICE names one by part of its name;
  // else a GPU, else an accelerator, else any) and builds the kernels. Null,
  // with *error set, when there is no usable platform or device.
  static std::unique_ptr<GpuEngine> Create(std::string* error);
  ~GpuEngine() override;

  int32_t Resize(const PicRegion& src, const PicRegion& dst, ScaleFilter filter) override;
  int32_t Convert(const PicRegion& src, const PicRegion& dst, bool flip) override;
  int32_t Perspective(const PicRegion& src, const PicRegion& dst,
                      const PerspectiveMap& map) override;
  std::string Name() const override { return m_sName; }
  int32_t MeasureFrames(int width, int height, int frames, StageTimes* out) override;

 private:
  GpuEngine() = default;
  bool Build(cl_device_id device, std::string* error);
  cl_mem Buffer(int slot, size_t bytes);
  // Host rectangle to device buffer (toDevice) or back.
  bool Transfer(cl_mem buffer, const PicRegion& pic, bool toDevice);
  bool RunKernel(cl_kernel kernel, size_t gx, size_t gy);

  enum Kernel { kYuy2ToArgb, kArgbToYuy2, kCopyRows, kScaleArgb, kScaleYuy2, kPerspective, kCount };
  std::string m_sName;
  cl_context m_Context = nullptr;
  cl_command_queue m_Queue = nullptr;
  cl_program m_Program = nullptr;
  cl_kernel m_Kernels[kCount] = {};
  cl_mem m_Buffers[3] = {};  // source, destination, parameters
  size_t m_BufferBytes[3] = {};
};
