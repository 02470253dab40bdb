// The exception of the request reader. It carries one text and nothing else; the entry points turn
// it into the code 630 and never show it.
#pragma once

#include <exception>
#include <string>
#include <string_view>

namespace qrl {

class ECfgError : public std::exception {
public:
    explicit ECfgError(std::u16string text) : text_(std::move(text)) {}
    const std::u16string& Text() const noexcept { return text_; }
    const char* what() const noexcept override { return "ECfgError"; }

    // "expected tag <Want>, found <Found> instead": the one message of every reader of a list of
    // children, kept in one place so that all of them say it alike.
    static ECfgError WrongChild(std::u16string_view want, std::u16string_view found);

private:
    std::u16string text_;
};

}  // namespace qrl
