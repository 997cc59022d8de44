#include "language/ParenCheck.h"

namespace nib {

namespace {

/// No statement begins with one of these.
constexpr TextView kInfix{u",)]+-/:&=<>#^~|;"};

} // namespace

void ParenCheck::Line(const BasicLine& line, Place place)
{
    if (!line.IsCode()) return;
    if (depth_ > 0 && !GoesOnWith(line)) Finish();
    if (line.OpenQuote()) {
        depth_ = 0; // what the string swallowed is not known
        return;
    }
    bool tooMany = false;
    for (const BasicToken& token : line.Tokens()) {
        if (line.IsSign(token, u'(')) {
            if (depth_++ == 0) opened_ = place;
        } else if (line.IsSign(token, u')')) {
            tooMany = tooMany || depth_ == 0;
            if (depth_ > 0) --depth_;
        }
    }
    if (tooMany) findings_.Add(place, u"\")\" without \"(\".");
    mustGoOn_ = !line.EndsValue(line.Tokens().back());
}

bool ParenCheck::GoesOnWith(const BasicLine& line) const
{
    const BasicToken& first = line.Tokens().front();
    return mustGoOn_ || (first.kind == BasicToken::Kind::Sign && kInfix.find(line.At(first.start)) != TextView::npos);
}

void ParenCheck::Finish()
{
    if (depth_ > 0) findings_.Add(opened_, u"\"(\" without \")\".");
    depth_ = 0;
}

} // namespace nib
