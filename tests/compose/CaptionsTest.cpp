#include "compose/Captions.h"
#include "TestSupport.h"

#include <QDir>
#include <QFontDatabase>

namespace {

using namespace captions;

TEST(CaptionText, NameAndFolderItems) {
    // The items out: name, full name, folder, full folder.
    const std::pair<ItemSource, QStringList> rows[] = {
        // A list title stands for both names, whatever the extension setting.
        {{"/p/a/x.jpg", "/p/a/x.jpg", "Trips", true, "Harbour at dusk", false},
         {"Harbour at dusk", "Harbour at dusk", "in folder Trips", "/p/a/"}},
        // Always four characters go, however long the extension.
        {{"/p/a/photo.jpeg", "/p/a/photo.jpeg", "Trips", false, {}, false},
         {"photo.", "/p/a/photo.", "in folder Trips", "/p/a/"}},
        {{"/p/a/photo.jpeg", "/p/a/photo.jpeg", "Trips", false, {}, true},
         {"photo.jpeg", "/p/a/photo.jpeg", "in folder Trips", "/p/a/"}},
        // A web image names its source as it is, for the short and the full folder alike.
        {{"/cache/feed/12.jpg", "http://example.org/img/sea.jpg", "Sea Feed", false, {}, false},
         {"sea", "http://example.org/img/sea", "Sea Feed", "Sea Feed"}},
    };
    for (const auto& [in, out] : rows) {
        CaptionItems i;
        NameAndFolderItems(in, i);
        EXPECT_EQ(QStringList({i.FileName, i.FileNameFull, i.FolderName, i.FolderNameFull}), out);
    }
}

TEST(CaptionText, CameraNameFilter) {
    const QStringList prefixes{"DSC", "IMG"};
    struct Row {
        const char* name;
        QStringList prefixes;
        bool on;
        bool filtered;
    };
    const Row rows[] = {
        {"DSC01234.JPG", prefixes, true, true},  {"dsc01234.jpg", prefixes, true, true},
        {"IMG_0042", prefixes, true, true},      {"Harbour", prefixes, true, false},
        {"DS", prefixes, true, false},           {"DSC01234.JPG", prefixes, false, false},
        {"Harbour", {"IMG", "har"}, true, true}, {"Harbour", {}, true, false},
    };
    for (const Row& row : rows)
        EXPECT_EQ(DSCFiltered(row.name, row.prefixes, row.on), row.filtered)
            << row.name << " " << row.prefixes.join(',').toStdString();

    EXPECT_EQ(FilteredNameReplacement(true, true, "Sea Feed"), "from Sea Feed");
    EXPECT_EQ(FilteredNameReplacement(true, false, "Trips"), "in folder Trips");
    EXPECT_EQ(FilteredNameReplacement(false, false, "Trips"), "");
}

TEST(CaptionText, DateFormat) {
    // clang-format off
    const std::pair<const char*, const char*> rows[] = {
        {"2005:07:09 12:00:00", "July 09, 2005"}, {"1999:01:31 00:00:00", "January 31, 1999"},
        {"2010:12:01 08:30:00", "December 01, 2010"}, {"0000:00:00 00:00:00", ""},
        {"notEXIF", ""}, {"file-open-problem", ""}, {"2005:13:09 12:00:00", " 09, 2005"},
        {"", ""}, {"    ", ""}};
    // clang-format on
    for (const auto& [in, out] : rows)
        EXPECT_EQ(FormatDate(in), out) << '"' << in << '"';
}

TEST(CaptionText, BlockItemsMoveUpPastEmptyOnes) {
    BlockText block;
    int count = 0;
    for (const char* item : {"", "first", "", "second", "third", "fourth"})
        AddToCaptionBlock(block, item, count);
    EXPECT_EQ(count, 4);
    EXPECT_EQ(block.top, "first");
    EXPECT_EQ(block.caption, "second\nthird\nfourth");

    CaptionItems items{"", "", "in folder Trips", "/p/a/", "July 09, 2005", "640 x 480", "Walk"};
    BlockText filtered = BuildBlock(items, {true, false, true, false, true, true, true});
    EXPECT_EQ(filtered.top, "in folder Trips");
    EXPECT_EQ(filtered.caption, "July 09, 2005\n640 x 480");
    EXPECT_EQ(filtered.description, "Walk");

    items.FileName = "harbour";
    items.FileNameFull = "/p/a/harbour";
    BlockText named = BuildBlock(items, {true, true, true, true, false, false, false});
    EXPECT_EQ(named.top, "/p/a/harbour");
    EXPECT_EQ(named.caption, "/p/a/");
    EXPECT_EQ(named.description, "");
}

TEST(CaptionGeometry, WidthAndHeight) {
    struct Row {
        LabelSize top, caption, description;
        int width, height;
    };
    const Row rows[] = {
        // A long description wraps at 400 pixels, and the box is 15 wider.
        {{true, 100, 20}, {true, 120, 34}, {true, 900, 60}, 400, 20 + 34 + 64 + 2},
        {{true, 120, 20}, {true, 80, 17}, {true, 300, 40}, 300, 20 + 17 + 44 + 2},
        {{true, 100, 20}, {false, 0, 0}, {true, 60, 17}, 100, 20 + 21 + 2},
        // A line wider than 400 sets the width; the description wraps there.
        {{true, 450, 20}, {true, 120, 17}, {true, 900, 80}, 450, 20 + 17 + 84 + 2},
        {{false, 0, 0}, {true, 120, 34}, {false, 900, 0}, 120, 34 + 2},
        {{false, 0, 0}, {false, 0, 0}, {true, 400, 40}, 400, 40 + 4 + 2},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(ContentWidth(row.top, row.caption, row.description), row.width);
        EXPECT_EQ(BoxHeight(row.top, row.caption, row.description), row.height);
    }
    EXPECT_EQ(BoxWidth(ContentWidth({true, 120, 20}, {true, 120, 17}, {true, 900, 60})), 415);
}

TEST(CaptionGeometry, PositionsOnAMonitorOffTheOrigin) {
    // boxW 215 puts the centred boxes on a half pixel, which rounds to even.
    const PlaceArea area{1000, 700, 1280, 100};
    const int boxW = 215, boxH = 52;
    struct Row {
        int position;
        int left, top; // with margin 0; each grows or shrinks by the margin as noted
        int dLeft, dTop;
        Align align;
    };
    const Row rows[] = {
        {1, 1280, 100, +1, +1, Align::Left},  {2, 1672, 100, 0, +1, Align::Centre},
        {3, 2065, 100, -1, +1, Align::Right}, {4, 1280, 748, +1, -1, Align::Left},
        {5, 1672, 748, 0, -1, Align::Centre}, {6, 2065, 748, -1, -1, Align::Right},
        {0, 392, 0, 0, +1, Align::Centre},    {7, 392, 0, 0, +1, Align::Centre},
    };
    for (const Row& row : rows)
        for (const int margin : {0, 10}) {
            SCOPED_TRACE(testing::Message() << "position " << row.position << " margin " << margin);
            const BoxPlace place = PlaceBox(row.position, boxW, boxH, margin, area);
            EXPECT_EQ(place.left, row.left + row.dLeft * margin);
            EXPECT_EQ(place.top, row.top + row.dTop * margin);
            EXPECT_EQ(place.align, row.align);
        }
}

TEST(CaptionGeometry, LabelsStackInTheBox) {
    const LabelSize top{true, 100, 20}, caption{true, 100, 34}, description{true, 300, 60};
    const LabelSize none{};
    BlockLayout all = LayoutLabels(top, caption, description, 315);
    EXPECT_EQ(all.top.top, 0);
    EXPECT_EQ(all.caption.top, 20);
    EXPECT_EQ(all.description.top, 20 + 34 + 2 + 2);
    EXPECT_EQ(all.description.height, 60);
    for (const LabelPlace& p : {all.top, all.caption, all.description}) {
        EXPECT_TRUE(p.visible);
        EXPECT_EQ(p.left, 5);
        EXPECT_EQ(p.width, 315);
    }
    BlockLayout gaps = LayoutLabels(none, caption, description, 100);
    EXPECT_FALSE(gaps.top.visible);
    EXPECT_EQ(gaps.caption.top, 0);
    EXPECT_EQ(gaps.description.top, 34 + 4);
    EXPECT_EQ(LayoutLabels(top, none, description, 100).description.top, 22);
}

// The caption toggle and ChangePhotos call UpdateCaption on a form with a frame on screen.
class CaptionsForm : public ShowFixture {
protected:
    void SetUp() override {
        ShowFixture::SetUp();
        show->resize(1200, 800);
        show->MonitorLeft[1] = 100;
        show->MonitorTop[1] = 50;
        show->MonitorWidth[1] = 800;
        show->MonitorHeight[1] = 600;
        show->NextMonitorSet = 1;
        show->FrameWidth = 800;
        show->ShowCaptions = true;
        show->FloatingCaptions = false;
        show->CaptionPosition = {1, 6};
        // The first block names the photo; the second says all it can.
        show->CapFileName = {true, true};
        show->CapFileNameFullPath = show->CapFolderNameFullPath = {false, false};
        show->CapFolderName = show->CapEXIFDate = show->CapDimensions =
            show->CapEXIFDescription = {false, true};
        show->DSCFilterON = true;
        show->DSCShowFolderName = false;

        // The caption line of a local photo carries its file name; the folder names it.
        QDir(install.path()).mkpath(QStringLiteral("Trips"));
        photo = install.filePath(QStringLiteral("Trips/harbour.jpg"));
        ASSERT_TRUE(Solid({64, 48}, Qt::darkCyan).save(photo, "JPEG"));
        show->CurrentImage = photo;
        show->CurrentImageTag = 7;
        show->CaptionFullName = photo;
        show->CaptionSource = QStringLiteral("harbour.jpg");
        show->ImageSizeText[static_cast<std::size_t>(show->CurrentFrameSlot)] =
            QStringLiteral("64 x 48");
        show->ImageDescriptions.add(QStringLiteral("A long walk by the water"), 7);
    }
    QString Text(const char* name, int block) const {
        auto* label = show->findChild<QLabel*>(QStringLiteral("%1(%2)").arg(name).arg(block));
        return label && !label->isHidden() ? label->text() : QStringLiteral("<hidden>");
    }
    QString photo;
};

TEST_F(CaptionsForm, BlocksShowTheirItemsInTheirCorners) {
    show->UpdateCaption();
    EXPECT_EQ(Text("lblTopCaption", 0), "harbour");
    EXPECT_EQ(Text("lblCaption", 0), "<hidden>");
    EXPECT_EQ(Text("lblDescription", 0), "<hidden>");
    EXPECT_EQ(Text("lblTopCaption", 1), "harbour");
    // A JPEG without EXIF data has no date: the size moves up under the folder.
    EXPECT_EQ(Text("lblCaption", 1), "in folder Trips\n64 x 48");
    EXPECT_EQ(Text("lblDescription", 1), "A long walk by the water");

    const QRect second = show->CaptionBox[1]->geometry();
    ASSERT_FALSE(show->CaptionBox[0]->isHidden());
    ASSERT_FALSE(show->CaptionBox[1]->isHidden());
    EXPECT_EQ(show->CaptionBox[0]->geometry().topLeft(), QPoint(100, 50));
    EXPECT_EQ(second.bottomRight(), QPoint(899, 649));
    // Every visible label fits inside its box.
    for (QLabel* label : show->CaptionBox[1]->findChildren<QLabel*>()) {
        if (label->isHidden()) continue;
        EXPECT_GT(second.height(), label->geometry().bottom()) << label->objectName().toStdString();
    }

    // The prefix list is read from the settings window as it stands.
    frmConfig::instance()->lstDSCFilter->addItem(QStringLiteral("har"));
    show->UpdateCaption();
    EXPECT_EQ(show->lblTopCaption[0]->text(), "");
    EXPECT_TRUE(show->CaptionBox[0]->isHidden());
    EXPECT_EQ(Text("lblTopCaption", 1), "in folder Trips");
    EXPECT_EQ(Text("lblCaption", 1), "64 x 48");

    show->DSCShowFolderName = true;
    show->UpdateCaption();
    EXPECT_EQ(Text("lblTopCaption", 0), "in folder Trips");
}

TEST_F(CaptionsForm, NoBoxesForTheLogoOrWithCaptionsOff) {
    show->UpdateCaption();
    ASSERT_FALSE(show->CaptionBox[1]->isHidden());
    show->CurrentImage = QStringLiteral("INTERNAL:0");
    show->UpdateCaption();
    EXPECT_TRUE(show->CaptionBox[0]->isHidden());
    EXPECT_TRUE(show->CaptionBox[1]->isHidden());

    show->CurrentImage = photo;
    show->UpdateCaption();
    show->ShowCaptions = false;
    show->UpdateCaption();
    EXPECT_TRUE(show->CaptionBox[0]->isHidden());
    EXPECT_TRUE(show->CaptionBox[1]->isHidden());
}

// Only the second line takes the chosen family; a family the machine lacks changes nothing.
TEST_F(CaptionsForm, OnlyTheCaptionLineTakesTheFontFamily) {
    const QString serif = QStringLiteral("DejaVu Serif");
    if (!QFontDatabase::hasFamily(serif)) GTEST_SKIP() << "no DejaVu Serif on this machine";
    const QString designed = show->lblTopCaption[1]->font().family();
    ASSERT_NE(designed, serif);
    show->CaptionFontName = serif;
    show->CaptionFontSize = 14;
    show->UpdateCaption();
    EXPECT_EQ(show->lblCaption[1]->font().family(), serif);
    EXPECT_EQ(show->lblTopCaption[1]->font().family(), designed);
    EXPECT_EQ(show->lblDescription[1]->font().family(), designed);
    EXPECT_EQ(show->lblTopCaption[1]->font().pointSizeF(), 14.0);

    show->CaptionFontName = QStringLiteral("No Such Family Anywhere");
    show->UpdateCaption();
    EXPECT_EQ(show->lblCaption[1]->font().family(), serif);
}

TEST_F(CaptionsForm, StatusLineTitle) {
    show->ImageTitles.add(QStringLiteral("Harbour"), 1);
    show->ImageTitles.add(QStringLiteral("   "), 2);
    for (const auto& [tag, title] :
         {std::pair{1, "Harbour"}, {2, "(blank title)"}, {3, "/p/a/x.jpg"}}) {
        QString result;
        show->GetTitleOrFilename(QStringLiteral("/p/a/x.jpg"), tag, result);
        EXPECT_EQ(result, title) << tag;
    }
    QString internal = QStringLiteral("left over");
    show->GetTitleOrFilename(QStringLiteral("INTERNAL:0"), 1, internal);
    EXPECT_EQ(internal, "");
}

} // namespace
