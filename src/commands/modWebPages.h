// Addresses of the product's web pages and mail.
// Room: commands.
#pragma once

#include <string>

/// The address of a page of the product's site: "/FAQ/FAQ-Languages.htm".
inline std::string sWebPage(const std::string& sPath)
{
    return "https://www.orbelan.example" + sPath;
}

constexpr const char* kPageLanguages = "/FAQ/FAQ-Languages.htm";
