#include "app/Complaint.h"

#include <cstdio>
#include <iostream>

#include "toolkit/Text.h"

namespace FendaMaestros {

namespace {

std::string byCode(char32_t character) {
    char code[16];
    std::snprintf(code, sizeof code, "\\u{%X}", static_cast<unsigned>(character));
    return code;
}

std::string printable(const std::string& sentence) {
    const bool wellFormed = text::isUtf8(sentence);
    std::string result;
    for (const char32_t character : text::characters(sentence)) {
        if (text::isControl(character) || (!wellFormed && character > 0x7E))
            result += byCode(character);
        else
            text::append(result, character);
    }
    return result;
}

}  // namespace

int complain(const std::string& sentence, int status) {
    std::cout.flush();
    std::fflush(stdout);
    std::cerr << "fenda: " << printable(sentence) << std::endl;
    return status;
}

}  // namespace FendaMaestros
