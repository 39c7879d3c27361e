# SPDX-License-Identifier: GPL-3.0-or-later
from case import EndToEndCase, main


class WebSearch(EndToEndCase):
    def test_offers_the_web_where_nothing_is_found(self):
        self.start()
        self.launcher.type("zzyzx")
        self.shows_rows(('Search "zzyzx"', "Search with Bing"))
        self.becomes(self.launcher.status, None)
        self.picture("offer")
        self.launcher.press("Return")
        self.hides()
        self.assertEqual(self.is_recorded("browser")["arguments"],
                         ["https://www.bing.com/search?q=zzyzx"])

    def test_searches_for_words_that_are_no_command_with_the_preferred_engine(self):
        self.home.set_preferences(searchEngine="DuckDuckGo")
        self.start()
        self.launcher.type("zz&x 1+1")
        self.shows_rows(('Search "zz&x 1+1"', "Search with DuckDuckGo"))
        self.becomes(self.launcher.status, "zz&x | Unknown command")
        self.launcher.press("Return")
        self.hides()
        self.assertEqual(self.is_recorded("browser")["arguments"],
                         ["https://duckduckgo.com/?q=zz%26x%201%2B1"])


if __name__ == "__main__":
    main()
