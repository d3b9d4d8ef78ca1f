#pragma once
// Dragging geometry while the user picks a point. Without a screen, the drag takes one typed answer
// per call through the same prompts as every other input (ask()): a subclass's sampler() acquires a
// point or a string, and when the sample is good, update() changes the dragged geometry to match.
//
//   class AreaJig : public QvEdJig {
//       DragStatus sampler() override { return acquirePoint(m_corner, m_base); }
//       bool update() override { /* move the last vertex to m_corner */ return true; }
//   };
//   jig.setDispPrompt("\nNext point: ");
//   jig.setKeywordList("Undo Close");
//   switch (jig.drag()) { case QvEdJig::kNormal: ...; case QvEdJig::kKeyword: jig.keyword() ... }

#include "qvad/api/qvad_api.h"
#include "qvad/ge/point3d.h"

#include <string>

class QV_API QvEdJig {
public:
    enum DragStatus {
        kNormal = 0,   // a point or string was acquired
        kKeyword = 1,  // a keyword: keyword() and keywordIndex() say which
        kNull = -1,    // an empty answer, with kNullResponseAccepted
        kOther = -3,   // other text, with kAcceptOtherInputString: inputString() holds it
        kCancel = -4,  // cancelled, or the input ended
        kNoChange = -6 // the sample equals the last one: update() is not called
    };
    // Bits for setUserInputControls.
    enum UserInputControls {
        kNullResponseAccepted = 1,
        kNoZeroResponseAccepted = 2, // for acquireDist
        kNoNegativeResponseAccepted = 4,
        kAcceptOtherInputString = 8,
        kDontUpdateLastPoint = 16,
    };

    QvEdJig();
    virtual ~QvEdJig();
    QvEdJig(const QvEdJig&) = delete;
    QvEdJig& operator=(const QvEdJig&) = delete;

    // printf-style, as the host's other prompts.
    void setDispPrompt(const char* format, ...);
    const char* dispPrompt() const { return m_prompt.c_str(); }
    void setKeywordList(const char* keywords);
    void setUserInputControls(int controls) { m_controls = controls; }
    int userInputControls() const { return m_controls; }

    // One drag: sampler(), then update() when it gave a new sample. Returns the sampler's status.
    virtual DragStatus drag();
    // The subclass acquires here, with one of the acquire calls.
    virtual DragStatus sampler() = 0;
    // Changes the dragged geometry to the last sample; false leaves it as it was.
    virtual bool update() = 0;

    // Prompts with the display prompt; point is untouched unless kNormal.
    DragStatus acquirePoint(OdGePoint3d& point);
    // The base only steers a rubber band a screen would draw.
    DragStatus acquirePoint(OdGePoint3d& point, const OdGePoint3d& base);
    DragStatus acquireString(std::string& text);
    DragStatus acquireDist(double& distance, const OdGePoint3d& base);

    const std::string& keyword() const { return m_keyword; }
    int keywordIndex() const { return m_keywordIndex; }
    const std::string& inputString() const { return m_other; }

private:
    DragStatus acquire(int kind, OdGePoint3d* point, std::string* text, double* distance,
                       const OdGePoint3d* base);

    std::string m_prompt;
    std::string m_keywords;
    int m_controls = 0;
    std::string m_keyword;
    int m_keywordIndex = -1;
    std::string m_other;
    bool m_sampled = false;
    OdGePoint3d m_lastPoint;
    std::string m_lastText;
    double m_lastDistance = 0.0;
};
