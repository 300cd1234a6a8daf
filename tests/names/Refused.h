#ifndef TESTS_NAMES_REFUSED_H
#define TESTS_NAMES_REFUSED_H

#include <KyImgLib/KyImgLib.h>

#include <gtest/gtest.h>

#include <string>

/// Looks a name up that must be refused with `status`; the text.
inline std::string Refused(const char* name, std::uint32_t status) {
    std::int64_t type = -1;
    std::uint32_t bayerFlags = 99;
    EXPECT_EQ(KyPixelFormat::Find(name, type, &bayerFlags), status) << name;
    EXPECT_TRUE(type == -1 && bayerFlags == 99) << name;
    return KyImageConverter::GetError();
}

inline void ExpectPart(const std::string& text, const std::string& part) {
    EXPECT_NE(text.find(part), std::string::npos) << part << " is not in " << text;
    EXPECT_LT(text.size(), 500U) << "may have been cut: " << text;
    EXPECT_EQ(text.find('\n'), std::string::npos) << text;
}

#endif
