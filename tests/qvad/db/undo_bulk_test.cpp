// Commands that open, change and erase many objects of a drawing read from a file: undo must give
// back the file's objects exactly, however often they go back and forth, and whichever journal
// recorded them.

#include "qvad/db/OdDbEntity.h"
#include "qvad/db/entities/OdDbLine.h"
#include "qvad/db/undo_journal.h"
#include "qvad/dxf/dxf_writer.h"
#include "structure_support.h"

#include <gtest/gtest.h>
#include <memory>
#include <string>

namespace {

using structure_test::completeDrawing;

constexpr int kLines = 300;

// kLines lines with handles from 0x100, then a 2D polyline with two vertices (handles 0x900...).
std::string drawingText() {
    std::string entities;
    for (int i = 0; i < kLines; ++i) {
        char handle[16];
        std::snprintf(handle, sizeof handle, "%X", 0x100 + i);
        entities += "0 LINE\n5 " + std::string(handle) + "\n330 1F\n100 AcDbEntity\n8 0\n100 AcDbLine\n10 " +
                    std::to_string(i) + ".5\n20 0.0\n30 0.0\n11 " + std::to_string(i) +
                    ".5\n21 7.25\n31 0.0\n";
    }
    entities +=
        "0 POLYLINE\n5 900\n330 1F\n100 AcDbEntity\n8 0\n100 AcDb2dPolyline\n66 1\n10 0.0\n20 0.0\n30 0.0\n"
        "0 VERTEX\n5 901\n330 900\n100 AcDbEntity\n8 0\n100 AcDbVertex\n100 AcDb2dVertex\n10 0.0\n20 0.0\n"
        "30 0.0\n"
        "0 VERTEX\n5 902\n330 900\n100 AcDbEntity\n8 0\n100 AcDbVertex\n100 AcDb2dVertex\n10 4.0\n20 4.0\n"
        "30 0.0\n"
        "0 SEQEND\n5 903\n330 900\n100 AcDbEntity\n8 0\n";
    return completeDrawing("AC1015", entities);
}

class UndoBulkTest : public ::testing::Test {
protected:
    void SetUp() override {
        db = structure_test::load(drawingText());
        ASSERT_TRUE(db);
        journal = std::make_unique<UndoJournal>(*db);
    }
    void TearDown() override { journal.reset(); }

    std::string bytes() const { return qvad::dxf::writeDxf(*db); }
    OdDbObject* object(qvad::Handle h) const { return db->getObject(h); }
    OdDbLine* line(int i) const { return dynamic_cast<OdDbLine*>(object(0x100 + i)); }
    template <class Work> void command(Work&& work) {
        journal->commandStarted();
        work();
        journal->commandEnded();
    }

    std::unique_ptr<OdDbDatabase> db;
    std::unique_ptr<UndoJournal> journal;
};

} // namespace

TEST_F(UndoBulkTest, ErasedAndChangedFileObjectsComeBackExactly) {
    ASSERT_NE(line(0), nullptr);
    ASSERT_NE(object(0x900), nullptr);
    EXPECT_TRUE(line(0)->tagsAreFileView());
    const std::string before = bytes();
    command([&] {
        for (int i = 0; i < kLines; ++i) {
            if (i % 3 == 0) {
                line(i)->setStartPoint(OdGePoint3d(-i, 1.0, 0.0));
                line(i)->setEndPoint(OdGePoint3d(i, 2.0, 0.0));
            }
            if (i % 2 == 0) {
                ASSERT_EQ(line(i)->erase(true), eOk);
            }
        }
        ASSERT_EQ(object(0x900)->erase(true), eOk);
    });
    EXPECT_FALSE(line(0)->tagsAreFileView());
    EXPECT_TRUE(object(0x902)->isErased());
    const std::string after = bytes();
    ASSERT_NE(after, before);

    ASSERT_EQ(journal->undo(1), 1);
    EXPECT_EQ(bytes(), before);
    EXPECT_FALSE(line(0)->isErased());
    EXPECT_FALSE(object(0x902)->isErased());
    EXPECT_EQ(line(3)->startPoint(), OdGePoint3d(3.5, 0.0, 0.0));
    ASSERT_TRUE(journal->redo());
    EXPECT_EQ(bytes(), after);
    ASSERT_EQ(journal->undo(1), 1);
    EXPECT_EQ(bytes(), before);

    // Objects given back their file state are changed again, and that undone too.
    command([&] {
        line(0)->setStartPoint(OdGePoint3d(100.0, 100.0, 0.0));
        line(1)->erase(true);
    });
    EXPECT_EQ(line(0)->startPoint(), OdGePoint3d(100.0, 100.0, 0.0));
    EXPECT_EQ(line(6)->startPoint(), OdGePoint3d(6.5, 0.0, 0.0)) << "a neighbour's file tags were written";
    ASSERT_EQ(journal->undo(1), 1);
    EXPECT_EQ(bytes(), before);
}

TEST_F(UndoBulkTest, ANewJournalRecordsObjectsAnEarlierOneRecorded) {
    command([&] { line(5)->setStartPoint(OdGePoint3d(1.0, 1.0, 0.0)); });
    journal.reset();
    journal = std::make_unique<UndoJournal>(*db);
    const std::string before = bytes();
    command([&] {
        line(5)->setStartPoint(OdGePoint3d(2.0, 2.0, 0.0));
        line(5)->erase(true);
    });
    ASSERT_EQ(journal->undo(1), 1);
    EXPECT_EQ(bytes(), before);
    EXPECT_EQ(line(5)->startPoint(), OdGePoint3d(1.0, 1.0, 0.0));
}
