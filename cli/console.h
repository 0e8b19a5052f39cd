#pragma once

#include <QString>

class QJsonValue;

// Where the tool's output goes: results to standard output, as text or as JSON, and
// problems to standard error, always as text.
class Console
{
public:
    explicit Console(bool json);

    bool json() const { return jsonOutput; }
    void line(const QString &text) const;
    void document(const QJsonValue &value) const;
    // One JSON object per line, for output that streams.
    void record(const QJsonValue &value) const;
    void problem(const QString &text) const;

private:
    bool jsonOutput;
};
