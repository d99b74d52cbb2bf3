// testing/Languages.h: the languages of lang/languages.txt, which says what the columns are. A program that uses it has
// the folder in CV_LANGUAGE_FOLDER.
#pragma once
#include <doctest.h>

#include <fstream>
#include <sstream>
#include <string>
#include <vector>

struct ListedLanguage {
    std::string name;  // of the file, without its extension
    int codePage = 0;
    std::vector<std::string> codes;  // none for the language that stands for all others
    std::string help;
};

inline std::vector<ListedLanguage> ListedLanguages() {
    std::ifstream list(std::string(CV_LANGUAGE_FOLDER) + "/languages.txt");
    std::vector<ListedLanguage> languages;
    for (std::string line; std::getline(list, line);) {
        if (line.empty() || line[0] == '#' || line[0] == '\r') continue;
        std::istringstream fields(line);
        ListedLanguage language;
        std::string locale, codes;
        fields >> language.name >> language.codePage >> locale >> codes >> language.help;
        REQUIRE(fields);
        std::istringstream each(codes == "*" ? "" : codes);
        for (std::string code; std::getline(each, code, ',');) language.codes.push_back(code);
        languages.push_back(language);
    }
    REQUIRE_FALSE(languages.empty());
    return languages;
}
