#include "NSLocale.h"

#include "ICUSupport.h"

#include <unicode/ures.h>

OBJC_IMPLEMENT_CLASS(NSLocale, NSObject)
{
    c.classMethod<&NSLocale::currentLocale>("currentLocale");
    c.classMethod<&NSLocale::localeWithLocaleIdentifier>("localeWithLocaleIdentifier:");
    c.method<&NSLocale::localeIdentifier>("localeIdentifier");
}

static std::string& currentIdentifier()
{
    static auto* identifier = new std::string("en_US");
    return *identifier;
}

RefPtr<NSLocale> NSLocale::currentLocale() { return make<NSLocale>(currentIdentifier()); }

RefPtr<NSLocale> NSLocale::localeWithLocaleIdentifier(const std::string& identifier)
{
    return make<NSLocale>(FoundationICU::locale(identifier).getName());
}

std::string NSLocale::currentLocaleIdentifier() { return currentIdentifier(); }

bool NSLocale::setCurrentLocaleIdentifier(const std::string& identifier)
{
    icu::Locale locale = FoundationICU::locale(identifier);
    if (identifier.empty() || locale.isBogus() || !*locale.getLanguage())
        return false;
    // ICU quietly falls back to its root data for a language it lacks; opening
    // the locale's resource bundle tells the two apart.
    UErrorCode status = U_ZERO_ERROR;
    UResourceBundle* bundle = ures_open(nullptr, locale.getName(), &status);
    bool known = U_SUCCESS(status) && status != U_USING_DEFAULT_WARNING;
    ures_close(bundle);
    if (!known)
        return false;
    currentIdentifier() = locale.getName();
    return true;
}
