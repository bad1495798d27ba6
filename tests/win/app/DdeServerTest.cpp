// The frame as a DDE server, driven by a client window of this thread.
#include "AppTestBase.h"

#include <dde.h>
#include <vector>

namespace
{

struct Ack {
    HWND server;
    UINT status;
    UINT_PTR item; // the atoms of an initiation, the command block of an execute
};

struct ClientLog {
    std::vector<Ack> initiateAcks;
    std::vector<Ack> executeAcks;
    std::vector<HWND> terminates;
    bool initiating = false;
};

ClientLog g_log;

LRESULT CALLBACK ClientProc(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam)
{
    HWND server = reinterpret_cast<HWND>(wParam);
    switch (message) {
    case WM_DDE_ACK:
        if (g_log.initiating) {
            // The answer to an initiation carries the two atoms, unpacked.
            g_log.initiateAcks.push_back({server, LOWORD(lParam), HIWORD(lParam)});
        } else {
            UINT_PTR status = 0, block = 0;
            ::UnpackDDElParam(WM_DDE_ACK, lParam, &status, &block);
            ::FreeDDElParam(WM_DDE_ACK, lParam);
            g_log.executeAcks.push_back({server, static_cast<UINT>(status), block});
            ::GlobalFree(reinterpret_cast<HGLOBAL>(block));
        }
        return 0;
    case WM_DDE_TERMINATE:
        g_log.terminates.push_back(server);
        return 0;
    default:
        return ::DefWindowProcA(hwnd, message, wParam, lParam);
    }
}

} // namespace

class DdeServerTest : public AppTestBase
{
  protected:
    void SetUp() override
    {
        AppTestBase::SetUp();
        g_log = ClientLog();
        WNDCLASSA wc = {};
        wc.lpfnWndProc = ClientProc;
        wc.hInstance = ::GetModuleHandleA(nullptr);
        wc.lpszClassName = "KmTestDdeClient";
        ::RegisterClassA(&wc); // fails harmlessly when already there
        m_client = ::CreateWindowExA(0, "KmTestDdeClient", "", WS_POPUP, 0, 0, 0, 0, nullptr,
                                     nullptr, wc.hInstance, nullptr);
        ASSERT_NE(m_client, nullptr);
        ASSERT_TRUE(Start("-s"));
        ASSERT_NE(m_frame, nullptr);
    }

    void TearDown() override
    {
        ::DestroyWindow(m_client);
        AppTestBase::TearDown();
    }

    void Initiate(const char* service, const char* topic)
    {
        ATOM serviceAtom = service ? ::GlobalAddAtomA(service) : 0;
        ATOM topicAtom = topic ? ::GlobalAddAtomA(topic) : 0;
        g_log.initiating = true;
        ::SendMessageA(m_frame, WM_DDE_INITIATE, reinterpret_cast<WPARAM>(m_client),
                       MAKELPARAM(serviceAtom, topicAtom));
        g_log.initiating = false;
        if (serviceAtom)
            ::GlobalDeleteAtom(serviceAtom);
        if (topicAtom)
            ::GlobalDeleteAtom(topicAtom);
    }

    // Posts one command and waits for what it brings; the block it went in.
    HGLOBAL Execute(const std::string& command)
    {
        HGLOBAL block = ::GlobalAlloc(GMEM_MOVEABLE | GMEM_DDESHARE, command.size() + 1);
        char* text = static_cast<char*>(::GlobalLock(block));
        memcpy(text, command.c_str(), command.size() + 1);
        ::GlobalUnlock(block);
        LPARAM lParam = ::PackDDElParam(WM_DDE_EXECUTE, 0, reinterpret_cast<UINT_PTR>(block));
        if (!::PostMessageA(m_frame, WM_DDE_EXECUTE, reinterpret_cast<WPARAM>(m_client), lParam)) {
            ::FreeDDElParam(WM_DDE_EXECUTE, lParam);
            ::GlobalFree(block);
            return nullptr;
        }
        PumpUntilIdle();
        return block;
    }

    // The acknowledgement of an execute as the frame sends it: status 1,
    // with the client's own block.
    void ExpectAckFor(HGLOBAL block)
    {
        ASSERT_EQ(g_log.executeAcks.size(), 1u);
        const Ack& ack = g_log.executeAcks[0];
        EXPECT_EQ(ack.server, m_frame);
        EXPECT_EQ(LOWORD(ack.status), 1u);
        EXPECT_EQ(ack.item, reinterpret_cast<UINT_PTR>(block));
    }

    HWND m_client = nullptr;
};

TEST_F(DdeServerTest, InitiationIsAnsweredForServiceAndTopicOnly)
{
    // Held here so that the answer's atoms can be compared.
    ATOM service = ::GlobalAddAtomA("Kelmar");
    ATOM topic = ::GlobalAddAtomA("system");
    Initiate("Kelmar", "system");
    ASSERT_EQ(g_log.initiateAcks.size(), 1u);
    EXPECT_EQ(g_log.initiateAcks[0].server, m_frame);
    EXPECT_EQ(g_log.initiateAcks[0].status, service);
    EXPECT_EQ(g_log.initiateAcks[0].item, topic);
    ::GlobalDeleteAtom(service);
    ::GlobalDeleteAtom(topic);

    Initiate("Kelmar", "other");
    Initiate("Other", "system");
    Initiate(nullptr, nullptr); // a wild initiation
    Initiate("Kelmar", nullptr);
    EXPECT_EQ(g_log.initiateAcks.size(), 1u);
}

TEST_F(DdeServerTest, OpenCommandOpensTheFileAfterTheAnswer)
{
    WriteFile("x.c", "int x;\r\n");
    HGLOBAL block = Execute("[open(\"" + FullLower("x.c") + "\")]");
    ExpectAckFor(block);
    EXPECT_EQ(ChildCaptions(), std::set<std::string>{FullLower("x.c")});
    EXPECT_TRUE(m_boxes.texts.empty());
}

TEST_F(DdeServerTest, JunkBehindTheClosingQuoteStillOpens)
{
    WriteFile("x.c", "int x;\r\n");
    HGLOBAL block = Execute("[open(\"" + FullLower("x.c") + "\")]junk[open(\"other.c\")]");
    ExpectAckFor(block);
    EXPECT_EQ(ChildCaptions(), std::set<std::string>{FullLower("x.c")});
    EXPECT_TRUE(m_boxes.texts.empty()); // other.c is never looked at
}

TEST_F(DdeServerTest, CommandsWithoutTheExactPrefixOrQuoteAreAnsweredButDoNothing)
{
    WriteFile("x.c", "int x;\r\n");
    const std::string name = FullLower("x.c");
    for (const std::string& command :
         {"[OPEN(\"" + name + "\")]", "[open(\"" + name, "[open(" + name + ")]", std::string()}) {
        SCOPED_TRACE(command);
        g_log.executeAcks.clear();
        HGLOBAL block = Execute(command);
        ExpectAckFor(block);
        EXPECT_TRUE(ChildCaptions().empty());
    }
    EXPECT_TRUE(m_boxes.texts.empty());
}

TEST_F(DdeServerTest, ReferenceInTheNamePlacesTheCaret)
{
    WriteFile("x.c", "one\ntwo\nthree\nfour\n");
    HGLOBAL block = Execute("[open(\"" + FullLower("x.c") + "(3,2)\")]");
    ExpectAckFor(block);
    HWND child = ChildByCaption(FullLower("x.c"));
    ASSERT_NE(child, nullptr);
    CaretPlace place = CaretOf(child);
    EXPECT_EQ(place.line, 2);
    EXPECT_EQ(place.column, 1);
}

TEST_F(DdeServerTest, TerminateIsAnsweredWithATerminate)
{
    Initiate("Kelmar", "system");
    ::PostMessageA(m_frame, WM_DDE_TERMINATE, reinterpret_cast<WPARAM>(m_client), 0);
    PumpUntilIdle();
    ASSERT_EQ(g_log.terminates.size(), 1u);
    EXPECT_EQ(g_log.terminates[0], m_frame);
}
