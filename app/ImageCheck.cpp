#include "app/ImageCheck.h"

#include <QImageReader>
#include <QString>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <system_error>

namespace tachyrun {

std::string ImageFileProblem(const std::string& strPath) {
  if (strPath.empty()) return "--image needs a file name";
  const std::string strQuoted = "'" + strPath + "'";
  std::error_code error;
  const std::filesystem::file_status status = std::filesystem::status(strPath, error);
  if (!std::filesystem::exists(status)) return "the image file " + strQuoted + " does not exist";
  if (!std::filesystem::is_regular_file(status))
    return "the image file " + strQuoted + " can't be read: it is not a regular file";
  if (FILE* file = std::fopen(strPath.c_str(), "rb")) {
    std::fclose(file);
  } else {
    return "the image file " + strQuoted + " can't be read: " + std::strerror(errno);
  }
  QImageReader reader(QString::fromLocal8Bit(strPath.c_str()));
  if (reader.read().isNull())
    return "the image file " + strQuoted +
           " can't be decoded as an image: " + reader.errorString().toLocal8Bit().toStdString();
  return {};
}

}  // namespace tachyrun
