#pragma once

#include <objc/objc.h>

#include <string>

// A recoverable failure handed back to the caller as a value, with a domain,
// a code and a sentence for logs. Functions that can fail take an optional
// `RefPtr<NSError>* error` last, as Foundation's `error:` parameters do.
class NSError final : public NSObject {
    OBJC_CLASS(NSError)
public:
    NSError() = default;
    NSError(std::string domain, long code, std::string description)
        : m_domain(std::move(domain))
        , m_code(code)
        , m_description(std::move(description))
    {
    }
    static RefPtr<NSError> errorWithDomain(std::string domain, long code, std::string description)
    {
        return make<NSError>(std::move(domain), code, std::move(description));
    }

    const std::string& domain() const { return m_domain; }
    long code() const { return m_code; }
    const std::string& localizedDescription() const { return m_description; }
    std::string description() const override { return m_domain + " " + std::to_string(m_code) + ": " + m_description; }

    // Stores an error into an optional out-parameter.
    static void report(RefPtr<NSError>* out, std::string domain, long code, std::string description)
    {
        if (out)
            *out = errorWithDomain(std::move(domain), code, std::move(description));
    }

private:
    std::string m_domain;
    long m_code { 0 };
    std::string m_description;
};

inline constexpr const char* NSCocoaErrorDomain = "NSCocoaErrorDomain";
// Codes used in NSCocoaErrorDomain, with Foundation's values.
enum : long {
    NSFileNoSuchFileError = 4,
    NSFileReadUnknownError = 256,
    NSFileReadTooLargeError = 263,
    NSFileWriteUnknownError = 512,
    NSPropertyListReadCorruptError = 3840,
    NSPropertyListWriteInvalidError = 3852,
};
