#pragma once

class QLocale;
class QTranslator;

// Puts the program's texts, and Qt's own (dialog buttons), in the user's language. A
// language without a translation, or a text without one, stays in English.
class TranslationInstaller
{
public:
    // Replaces the translations installed before; true if the program has this language.
    static bool install(const QLocale &locale);

private:
    static QTranslator *program;
    static QTranslator *toolkit;
};
