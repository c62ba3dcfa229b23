#include "platform/DisplayAPI.h"

namespace DisplayAPI
{
Image::Image(const std::string& path) : path_(path) {}

const std::string& Image::path() const
{
    return path_;
}
} // namespace DisplayAPI
