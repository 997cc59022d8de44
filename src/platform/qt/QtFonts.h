#pragma once
#include "platform/Desktop.h"

#include <map>

namespace nib {

class QtFonts : public Fonts {
public:
    /// The private fonts lie in the program's folder.
    explicit QtFonts(Text programFolder) : programFolder_(std::move(programFolder)) {}
    bool Add(TextView fileName) override;
    void Remove(TextView fileName) override;
    std::vector<Text> Families() const override;
    Text ProgramFolder() const override;

private:
    Text programFolder_;
    /// Qt's numbers of the fonts added, by file name.
    std::map<Text, int, std::less<>> added_;
};

} // namespace nib
