#include "engine/GpuEngine.h"

#include <algorithm>
#include <cctype>
#include <chrono>
#include <cstdlib>
#include <vector>

#include "engine/GpuKernels.h"
#include "engine/OpenClDevice.h"
#include "engine/PerspectiveMap.h"

namespace {

const char* const kKernelNames[] = {"yuy2_to_argb", "argb_to_yuy2", "copy_rows",
                                    "scale_argb",   "scale_yuy2",   "perspective"};

std::string DeviceText(cl_device_id device, cl_device_info what) {
  size_t size = 0;
  if (clGetDeviceInfo(device, what, 0, nullptr, &size) != CL_SUCCESS) return "";
  std::string text(size, '\0');
  clGetDeviceInfo(device, what, size, text.data(), nullptr);
  text.resize(text.find('\0') == std::string::npos ? text.size() : text.find('\0'));
  return text;
}

std::string DeviceName(cl_device_id device) {
  return DeviceText(device, CL_DEVICE_NAME);
}

// `text` into `out` of `size` bytes, cut and terminated.
void CopyText(const std::string& text, char* out, int size) {
  if (out == nullptr || size <= 0) return;
  const size_t n = std::min(text.size(), static_cast<size_t>(size) - 1);
  text.copy(out, n);
  out[n] = '\0';
}

std::vector<cl_device_id> AllDevices() {
  cl_uint platforms = 0;
  if (clGetPlatformIDs(0, nullptr, &platforms) != CL_SUCCESS || platforms == 0) return {};
  std::vector<cl_platform_id> ids(platforms);
  if (clGetPlatformIDs(platforms, ids.data(), nullptr) != CL_SUCCESS) return {};
  std::vector<cl_device_id> devices;
  for (cl_platform_id p : ids) {
    cl_uint n = 0;
    if (clGetDeviceIDs(p, CL_DEVICE_TYPE_ALL, 0, nullptr, &n) != CL_SUCCESS || n == 0) continue;
    std::vector<cl_device_id> found(n);
    if (clGetDeviceIDs(p, CL_DEVICE_TYPE_ALL, n, found.data(), nullptr) != CL_SUCCESS) continue;
    devices.insert(devices.end(), found.begin(), found.end());
  }
  return devices;
}

std::string Lower(std::string s) {
  std::transform(s.begin(), s.end(), s.begin(), [](unsigned char c) { return std::tolower(c); });
  return s;
}

// The named device if TACHYRUN_OPENCL_DEVICE is set, else by kind.
cl_device_id ChooseDevice(const std::vector<cl_device_id>& devices, std::string* error) {
  const char* wanted = std::getenv("TACHYRUN_OPENCL_DEVICE");
  if (wanted != nullptr && *wanted != '\0') {
    for (cl_device_id d : devices) {
      if (Lower(DeviceName(d)).find(Lower(wanted)) != std::string::npos) return d;
    }
    *error = std::string("no OpenCL device named ") + wanted;
    return nullptr;
  }
  for (cl_device_type kind :
       {cl_device_type(CL_DEVICE_TYPE_GPU), cl_device_type(CL_DEVICE_TYPE_ACCELERATOR)}) {
    for (cl_device_id d : devices) {
      cl_device_type type = 0;
      clGetDeviceInfo(d, CL_DEVICE_TYPE, sizeof(type), &type, nullptr);
      if ((type & kind) != 0) return d;
    }
  }
  if (devices.empty()) {
    *error = "no OpenCL device";
    return nullptr;
  }
  return devices.front();
}

template <typename... Args>
bool SetArgs(cl_kernel kernel, const Args&... args) {
  cl_uint index = 0;
  bool ok = true;
  ((ok = ok && clSetKernelArg(kernel, index++, sizeof(args), &args) == CL_SUCCESS), ...);
  return ok;
}

size_t RowBytes(const PicRegion& pic) {
  return static_cast<size_t>(pic.w) * pic.BytesPerPixel();
}

size_t RectBytes(const PicRegion& pic) {
  return RowBytes(pic) * pic.h;
}

double MsSince(std::chrono::steady_clock::time_point t0) {
  return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - t0).count();
}

}  // namespace

int PixmillDescribeOpenClDevice(char* name, int nameSize, char* driver, int driverSize) {
  CopyText("", name, nameSize);
  CopyText("", driver, driverSize);
  std::string error;
  const std::vector<cl_device_id> devices = AllDevices();
  cl_device_id device = devices.empty() ? nullptr : ChooseDevice(devices, &error);
  if (device == nullptr) return PIXMILL_E_NO_DEVICE;
  CopyText(DeviceName(device), name, nameSize);
  CopyText(DeviceText(device, CL_DRIVER_VERSION), driver, driverSize);
  return PIXMILL_OK;
}

std::unique_ptr<GpuEngine> GpuEngine::Create(std::string* error) {
  const std::vector<cl_device_id> devices = AllDevices();
  if (devices.empty()) {
    *error = "no OpenCL device";
    return nullptr;
  }
  cl_device_id device = ChooseDevice(devices, error);
  if (device == nullptr) return nullptr;
  std::unique_ptr<GpuEngine> engine(new GpuEngine);
  if (!engine->Build(device, error)) return nullptr;
  return engine;
}

bool GpuEngine::Build(cl_device_id device, std::string* error) {
  m_sName = DeviceName(device);
  cl_int err = CL_SUCCESS;
  m_Context = clCreateContext(nullptr, 1, &device, nullptr, nullptr, &err);
  if (err != CL_SUCCESS) {
    *error = "OpenCL context failed on " + m_sName;
    return false;
  }
  m_Queue = clCreateCommandQueue(m_Context, device, 0, &err);
  const char* source = kPixmillKernelSource;
  if (err == CL_SUCCESS) {
    m_Program = clCreateProgramWithSource(m_Context, 1, &source, nullptr, &err);
  }
  if (err == CL_SUCCESS) err = clBuildProgram(m_Program, 1, &device, "", nullptr, nullptr);
  for (int k = 0; k < kCount && err == CL_SUCCESS; ++k) {
    m_Kernels[k] = clCreateKernel(m_Program, kKernelNames[k], &err);
  }
  if (err != CL_SUCCESS) *error = "OpenCL kernels failed on " + m_sName;
  return err == CL_SUCCESS;
}

GpuEngine::~GpuEngine() {
  for (cl_mem b : m_Buffers) {
    if (b != nullptr) clReleaseMemObject(b);
  }
  for (cl_kernel k : m_Kernels) {
    if (k != nullptr) clReleaseKernel(k);
  }
  if (m_Program != nullptr) clReleaseProgram(m_Program);
  if (m_Queue != nullptr) clReleaseCommandQueue(m_Queue);
  if (m_Context != nullptr) clReleaseContext(m_Context);
}

cl_mem GpuEngine::Buffer(int slot, size_t bytes) {
  if (m_Buffers[slot] != nullptr && m_BufferBytes[slot] >= bytes) return m_Buffers[slot];
  if (m_Buffers[slot] != nullptr) clReleaseMemObject(m_Buffers[slot]);
  cl_int err = CL_SUCCESS;
  m_Buffers[slot] = clCreateBuffer(m_Context, CL_MEM_READ_WRITE, bytes, nullptr, &err);
  if (err != CL_SUCCESS) m_Buffers[slot] = nullptr;
  m_BufferBytes[slot] = m_Buffers[slot] != nullptr ? bytes : 0;
  return m_Buffers[slot];
}

// The rectangle travels as a compact block; the host picture keeps its rows.
bool GpuEngine::Transfer(cl_mem buffer, const PicRegion& pic, bool toDevice) {
  const size_t origin[3] = {0, 0, 0};
  const size_t hostOrigin[3] = {static_cast<size_t>(pic.x) * pic.BytesPerPixel(),
                                static_cast<size_t>(pic.y), 0};
  const size_t region[3] = {RowBytes(pic), static_cast<size_t>(pic.h), 1};
  const cl_int err =
      toDevice
          ? clEnqueueWriteBufferRect(m_Queue, buffer, CL_TRUE, origin, hostOrigin, region,
                                     RowBytes(pic), 0, pic.stride, 0, pic.base, 0, nullptr, nullptr)
          : clEnqueueReadBufferRect(m_Queue, buffer, CL_TRUE, origin, hostOrigin, region,
                                    RowBytes(pic), 0, pic.stride, 0, pic.base, 0, nullptr, nullptr);
  return err == CL_SUCCESS;
}

bool GpuEngine::RunKernel(cl_kernel kernel, size_t gx, size_t gy) {
  const size_t global[2] = {gx, gy};
  if (clEnqueueNDRangeKernel(m_Queue, kernel, 2, nullptr, global, nullptr, 0, nullptr, nullptr) !=
      CL_SUCCESS) {
    return false;
  }
  return clFinish(m_Queue) == CL_SUCCESS;
}

int32_t GpuEngine::Resize(const PicRegion& src, const PicRegion& dst, ScaleFilter filter) {
  cl_mem in = Buffer(0, RectBytes(src)), out = Buffer(1, RectBytes(dst));
  if (in == nullptr || out == nullptr) return PIXMILL_E_NO_MEMORY;
  const bool yuy2 = src.format == PIX_YUY2;
  cl_kernel k = m_Kernels[yuy2 ? kScaleYuy2 : kScaleArgb];
  const cl_int f = filter;
  if (!Transfer(in, src, true) || !SetArgs(k, in, out, src.w, src.h, dst.w, dst.h, f) ||
      !RunKernel(k, yuy2 ? dst.w / 2 : dst.w, dst.h) || !Transfer(out, dst, false)) {
    return PIXMILL_E_DEVICE;
  }
  return PIXMILL_OK;
}

int32_t GpuEngine::Convert(const PicRegion& src, const PicRegion& dst, bool flip) {
  cl_mem in = Buffer(0, RectBytes(src)), out = Buffer(1, RectBytes(dst));
  if (in == nullptr || out == nullptr) return PIXMILL_E_NO_MEMORY;
  const cl_int f = flip ? 1 : 0;
  bool ok = Transfer(in, src, true);
  if (src.format == dst.format) {
    const cl_int rowBytes = static_cast<cl_int>(RowBytes(src));
    ok = ok && SetArgs(m_Kernels[kCopyRows], in, out, rowBytes, src.h, f) &&
         RunKernel(m_Kernels[kCopyRows], rowBytes, src.h);
  } else {
    cl_kernel k = m_Kernels[src.format == PIX_YUY2 ? kYuy2ToArgb : kArgbToYuy2];
    ok = ok && SetArgs(k, in, out, src.w, src.h, f) && RunKernel(k, src.w / 2, src.h);
  }
  return ok && Transfer(out, dst, false) ? PIXMILL_OK : PIXMILL_E_DEVICE;
}

int32_t GpuEngine::Perspective(const PicRegion& src, const PicRegion& dst,
                               const PerspectiveMap& map) {
  float coeff[21];
  for (int i = 0; i < 9; ++i) coeff[i] = static_cast<float>(map.h[i]);
  for (int e = 0; e < 4; ++e) {
    for (int j = 0; j < 3; ++j) coeff[9 + e * 3 + j] = static_cast<float>(map.edge[e][j]);
  }
  cl_mem in = Buffer(0, RectBytes(src)), out = Buffer(1, RectBytes(dst));
  cl_mem params = Buffer(2, sizeof(coeff));
  if (in == nullptr || out == nullptr || params == nullptr) return PIXMILL_E_NO_MEMORY;
  const cl_int filter = map.filter, keep = map.keepOutside ? 1 : 0;
  cl_kernel k = m_Kernels[kPerspective];
  bool ok = Transfer(in, src, true) && (!map.keepOutside || Transfer(out, dst, true)) &&
            clEnqueueWriteBuffer(m_Queue, params, CL_TRUE, 0, sizeof(coeff), coeff, 0, nullptr,
                                 nullptr) == CL_SUCCESS;
  ok = ok && SetArgs(k, in, out, src.w, src.h, dst.w, dst.h, params, filter, keep) &&
       RunKernel(k, dst.w, dst.h) && Transfer(out, dst, false);
  return ok ? PIXMILL_OK : PIXMILL_E_DEVICE;
}

int32_t GpuEngine::MeasureFrames(int width, int height, int frames, StageTimes* out) {
  int outW, outH;
  MeasureScaleTarget(width, height, &outW, &outH);
  std::vector<uint8_t> host(static_cast<size_t>(width) * height * 2, 128);
  std::vector<uint8_t> back(static_cast<size_t>(outW) * outH * 4);
  cl_mem yuy = Buffer(0, host.size()), argb = Buffer(1, static_cast<size_t>(width) * height * 4);
  cl_mem scaled = Buffer(2, back.size());  // the parameter slot; it only grows
  if (yuy == nullptr || argb == nullptr || scaled == nullptr) return PIXMILL_E_NO_MEMORY;
  const cl_int flip = 0, filter = kScaleBilinear;
  StageTimes sum;
  bool ok = SetArgs(m_Kernels[kYuy2ToArgb], yuy, argb, width, height, flip) &&
            SetArgs(m_Kernels[kScaleArgb], argb, scaled, width, height, outW, outH, filter);
  for (int i = 0; i < frames && ok; ++i) {
    auto t0 = std::chrono::steady_clock::now();
    ok = clEnqueueWriteBuffer(m_Queue, yuy, CL_TRUE, 0, host.size(), host.data(), 0, nullptr,
                              nullptr) == CL_SUCCESS;
    sum.dUpload += MsSince(t0);
    t0 = std::chrono::steady_clock::now();
    ok = ok && RunKernel(m_Kernels[kYuy2ToArgb], width / 2, height);
    sum.dConvert += MsSince(t0);
    t0 = std::chrono::steady_clock::now();
    ok = ok && RunKernel(m_Kernels[kScaleArgb], outW, outH);
    sum.dScale += MsSince(t0);
    t0 = std::chrono::steady_clock::now();
    ok = ok && clEnqueueReadBuffer(m_Queue, scaled, CL_TRUE, 0, back.size(), back.data(), 0,
                                   nullptr, nullptr) == CL_SUCCESS;
    sum.dDownload += MsSince(t0);
  }
  if (!ok) return PIXMILL_E_DEVICE;
  *out = {sum.dUpload / frames, sum.dConvert / frames, sum.dScale / frames, sum.dDownload / frames};
  return PIXMILL_OK;
}
