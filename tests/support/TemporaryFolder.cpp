// SPDX-License-Identifier: MIT
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <random>
#include <stdexcept>
#include <system_error>

namespace KestrinProductEditor {

TemporaryFolder::TemporaryFolder()
{
    constexpr int kAttempts = 100;
    const std::filesystem::path parent = std::filesystem::temp_directory_path();
    std::random_device random;
    for (int attempt = 0; attempt < kAttempts; ++attempt) {
        m_path = parent / ("kstnedit-test-" + std::to_string(random()));
        if (std::filesystem::create_directory(m_path))
            return;
    }
    throw std::runtime_error("cannot create a temporary folder in " + parent.string());
}

TemporaryFolder::~TemporaryFolder()
{
    std::error_code error;
    std::filesystem::remove_all(m_path, error);
    EXPECT_FALSE(error) << "cannot remove " << m_path << ": " << error.message();
}

std::u16string TemporaryFolder::File(std::string_view name) const
{
    return (m_path / name).u16string();
}

void TemporaryFolder::Write(std::string_view name, std::string_view content) const
{
    std::ofstream file(m_path / name, std::ios::binary | std::ios::trunc);
    file.write(content.data(), static_cast<std::streamsize>(content.size()));
    file.close();
    ASSERT_TRUE(file) << "cannot write " << m_path / name;
}

std::string TemporaryFolder::Read(std::string_view name) const
{
    std::ifstream file(m_path / name, std::ios::binary);
    EXPECT_TRUE(file) << "cannot read " << m_path / name;
    return std::string(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
}

std::vector<std::string> TemporaryFolder::Names() const
{
    std::vector<std::string> names;
    for (const std::filesystem::directory_entry& entry : std::filesystem::directory_iterator(m_path))
        names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
}

} // namespace KestrinProductEditor
