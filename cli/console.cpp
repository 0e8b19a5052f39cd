#include "cli/console.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <cstdio>

namespace {

void write(FILE *stream, const QByteArray &bytes)
{
    std::fwrite(bytes.constData(), 1, size_t(bytes.size()), stream);
    // Lines must reach a pipe as they happen (monitor), not when the buffer fills.
    std::fflush(stream);
}

QJsonDocument documentOf(const QJsonValue &value)
{
    return value.isArray() ? QJsonDocument(value.toArray()) : QJsonDocument(value.toObject());
}

} // namespace

Console::Console(bool json)
    : jsonOutput(json)
{}

void Console::line(const QString &text) const
{
    write(stdout, text.toUtf8() + '\n');
}

void Console::document(const QJsonValue &value) const
{
    write(stdout, documentOf(value).toJson(QJsonDocument::Indented));
}

void Console::record(const QJsonValue &value) const
{
    write(stdout, documentOf(value).toJson(QJsonDocument::Compact) + '\n');
}

void Console::problem(const QString &text) const
{
    write(stderr, "zelvar-servo: " + text.toUtf8() + '\n');
}
