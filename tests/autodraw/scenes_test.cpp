#include <regex>
#include <gtest/gtest.h>

#include "autodraw/motifs.h"
#include "autodraw/pen_paths.h"
#include "autodraw/sequencer.h"
#include "autodraw/sketches.h"
#include "clearing/actions.h"
#include "support/fakes.h"

struct Scene {
    std::string steps;           // a letter a call: line, ellipse filled (E) or drawn (e), arc, polygon
    std::vector<float> numbers;  // of all calls
};

// Draws a scene, from the seed on, with a stop and a new run after that many steps.
static Scene drawScene(bool motif, uint32_t seed, int stopAfter)
{
    const Desk desk(oneMonitor);
    seedAll(seed);
    penLastValid = false;
    autoMode = 3;
    motif ? startMotif() : startSketch();
    EXPECT_NE(motifActive, sketchActive);
    Scene scene;
    for (int step = 1; motifActive || sketchActive; ++step) {
        recorded.draws.clear();
        const bool heard = motif ? stepMotif() : stepSketch();
        EXPECT_EQ(heard, motif || !sketchActive);
        for (const DrawCall &call : recorded.draws) {
            scene.steps += call.what == "FillEllipse" ? 'E' : call.what[4] == 'E' ? 'e' : call.what[4];
            scene.numbers.insert(scene.numbers.end(), call.numbers.begin(), call.numbers.end());
        }
        scene.steps += ' ';
        if (step != stopAfter) continue;
        const Rng stream = markRng;
        autoStepsLeft = 5;
        stopAutoDrawing();
        startAction(3);
        markRng = stream;
    }
    EXPECT_EQ(recorded.alive, 0);
    return scene;
}

TEST(Scenes, AreDrawnStepByStepAndGoOnAfterAStop)
{
    static constexpr const char *forms[] = {"(L ){10}|(L ){12}|(L ){14}",
                                            "L{9} (Ee ){4,6}A ",
                                            "Ee L L{4} (Ee ){2,4}",
                                            "EeEe ((Ee){1,2} ){5,8}",
                                            "(L ){8,11}",  // sketches
                                            "Ee (EeL ){4,6}",
                                            "L{15} E LL ",
                                            "E EE L{5} PP ",
                                            "Ee (L ){5}",
                                            "(L ){4}",
                                            "Ee LLL LL LL "};
    for (int i = 0; i < 11; ++i) {
        const bool motif = i >= 5;
        const int form = motif ? i - 5 : i;
        int seen = 0;
        for (uint32_t seed = 1; seed <= 60; ++seed) {
            SCOPED_TRACE(testing::Message() << (motif ? "motif " : "sketch ") << form << " seed " << seed);
            {
                const Desk desk(oneMonitor);
                seedAll(seed);
                penLastValid = false;
                POINT anchor = motif ? freshPenStart() : POINT{400, 300};
                keepInside(anchor, 88);
                if (randInt(0, motif ? 5 : 4) != form) continue;
            }
            ++seen;
            const Scene scene = drawScene(motif, seed, 0);
            EXPECT_TRUE(std::regex_match(scene.steps, std::regex(forms[i]))) << scene.steps;
            EXPECT_EQ(drawScene(motif, seed, 2).numbers, scene.numbers);
        }
        EXPECT_GT(seen, 2);
    }
}
