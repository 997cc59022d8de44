#include "hosts/network/frmConnections.h"

#include "hosts/network/NetworkLink.h"
#include "logic/storage/HostFixture.h"
#include "platform/qt/QtText.h"
#include "widgets/FormAccess.h"
#include "widgets/Keys.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>

namespace nib::test {
namespace {

/// The server of the links answers nothing but why it cannot be reached.
HostLinkKinds Kinds()
{
    NetworkParts parts;
    parts.open = []() -> std::unique_ptr<ByteStream> { throw StreamEnded(u"the cable is out"); };
    HostLinkKinds kinds = AccountLinks({});
    kinds.merge(NetworkLinks(parts));
    return kinds;
}

class ConnectionsFormTest : public testing::Test {
protected:
    ConnectionsFormTest() { Show("# mine\n[west]\nroot=/w\n"); }

    void Show(const std::string& text)
    {
        form.reset();
        edits = std::make_unique<ConnectionEdits>(HostsFile::Read(folder.File("hosts.conf", text)), links);
        form = std::make_unique<frmConnections>(
            *edits, [this](const HostSettings& host) { forgotten.push_back(host.address); });
        form->show();
        QApplication::setActiveWindow(form.get());
        QTest::qWait(1);
    }
    template <typename Widget>
    Widget& Named(const char* name) const
    {
        for (Widget* widget : form->findChildren<Widget*>())
            if (widget->accessibleName() == QLatin1String(name) || SpokenName(*widget) == name) return *widget;
        throw std::runtime_error(name);
    }
    void Fill(const char* name, const char* text) const
    {
        auto& line = Named<QLineEdit>(name);
        EXPECT_TRUE(line.isVisible()) << name;
        line.setFocus();
        line.selectAll();
        QTest::keyClicks(&line, QString::fromUtf8(text));
    }
    /// All that the form says below its fields.
    std::string Said() const
    {
        for (const QLabel* label : form->findChildren<QLabel*>())
            if (label->wordWrap()) return label->text().toStdString();
        return {};
    }

    TempFolder folder;
    HostLinks links{HostConfig::Parse(u"[west]\nroot=/w\n[old]\nkind=network\naddress=gone\n", folder.Path()), Kinds()};
    std::vector<Text> forgotten;
    std::unique_ptr<ConnectionEdits> edits;
    std::unique_ptr<frmConnections> form;
};

TEST_F(ConnectionsFormTest, ByKeysAServerIsAddedTestedAndTaken)
{
    AccessKey(Qt::Key_A);
    EXPECT_TRUE(Named<QLineEdit>("Name").hasFocus());
    Type("stock");
    Fill("Address", "db");
    EXPECT_EQ(Named<QLineEdit>("Shown as").placeholderText().toStdString(), "db");
    Fill("Account", "SALES");
    Fill("Port", "x");
    Key(Qt::Key_Return);
    EXPECT_TRUE(form->isVisible());
    EXPECT_EQ(Said(), "\"x\" is no port: a number from 1 to 65535.");
    Fill("Port", "99");
    AccessKey(Qt::Key_T);
    EXPECT_EQ(Said(), "The server db cannot be reached: the cable is out.");
    Key(Qt::Key_Return);
    EXPECT_EQ(form->result(), QDialog::Accepted);
    EXPECT_EQ(BytesOf(folder / "hosts.conf"),
              "# mine\n[west]\nroot=/w\n\n[stock]\nkind=network\naddress=db\naccount=SALES\nport=99\n");
    EXPECT_EQ(links.Config().Find(u"stock").port, u"99");
    EXPECT_EQ(forgotten, std::vector<Text>{u"gone"});
}

TEST_F(ConnectionsFormTest, ChangesAndRemovalsWaitForOk)
{
    auto& list = Named<QListWidget>("Connections");
    auto& remove = Named<QPushButton>("Remove");
    EXPECT_TRUE(list.hasFocus());
    EXPECT_FALSE(remove.isEnabled() || Named<QLineEdit>("Name").isEnabled()) << "of the default connection";
    Key(Qt::Key_Down);
    EXPECT_EQ(Named<QLineEdit>("Folder").text().toStdString(), "/w");
    Fill("Name", "*");
    list.setFocus();
    EXPECT_EQ(Said(), "There is a connection named \"*\" already.");
    Key(Qt::Key_Up);
    Key(Qt::Key_Down);
    EXPECT_EQ(Named<QLineEdit>("Name").text().toStdString(), "west") << "it has kept its name";
    auto& kind = Named<QComboBox>("Kind");
    kind.setFocus();
    Key(Qt::Key_Down);
    EXPECT_TRUE(Named<QLineEdit>("Address").isVisible());
    EXPECT_FALSE(Named<QLineEdit>("Folder").isVisible());
    Fill("Address", "elsewhere");
    remove.click();
    EXPECT_EQ(list.count(), 1);
    Key(Qt::Key_Escape);
    EXPECT_EQ(form->result(), QDialog::Rejected);
    EXPECT_EQ(BytesOf(folder / "hosts.conf"), "# mine\n[west]\nroot=/w\n");
    EXPECT_EQ(links.Config().hosts.size(), 3U);
}

TEST_F(ConnectionsFormTest, WhatCannotBeWrittenKeepsItOpen)
{
    Fill("Folder", "/new");
    folder.File("hosts.conf", "[theirs]\n");
    Key(Qt::Key_Return);
    EXPECT_TRUE(form->isVisible());
    EXPECT_NE(Said().find("was changed by another program"), std::string::npos);
    EXPECT_EQ(links.Config().hosts.size(), 3U);
}

TEST_F(ConnectionsFormTest, EachKindIsAccessible)
{
    const QFont usual = QApplication::font();
    for (const int points : {10, 14}) {
        QFont font = usual;
        font.setPointSize(points);
        QApplication::setFont(font);
        Show("[*]\nroot=/a\n[s]\nkind=network\n");
        ExpectAccessible(*form);
        Named<QListWidget>("Connections").setCurrentRow(1);
        Named<QPushButton>("Test").click();
        EXPECT_NE(Said().find("names no address"), std::string::npos);
        ExpectAccessible(*form);
    }
    QApplication::setFont(usual);
}

} // namespace
} // namespace nib::test
